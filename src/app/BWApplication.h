#pragma once

#include <QApplication>

#include <string>

class QKeyEvent;

namespace brimwick {

class KeyDispatcher;

/// The application object: every key press and release goes to the dispatcher before any window.
class BWApplication : public QApplication {
  public:
    BWApplication(int& argc, char** argv);

    /// The home folder of the real user, whatever HOME says.
    static std::string realHomeDirectory();
    /// Ends the program. Unlike quit() it asks no window first: ours answer every close by hiding.
    static void terminate() { exit(0); }
    /// Not owned; null while there is none.
    void setKeyDispatcher(KeyDispatcher* dispatcher) { dispatcher_ = dispatcher; }

    bool notify(QObject* receiver, QEvent* event) override;

  private:
    bool dispatchKey(QKeyEvent& event);

    KeyDispatcher* dispatcher_ = nullptr;
};

} // namespace brimwick

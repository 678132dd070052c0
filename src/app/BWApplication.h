#pragma once

#include <QApplication>

#include <string>

class QKeyEvent;

namespace brimwick {

class KeyDispatcher;
class KeyEventReader;

/// The application object: every key press and release goes to the dispatcher before any window.
class BWApplication : public QApplication {
  public:
    BWApplication(int& argc, char** argv);

    /// The home folder of the real user, whatever HOME says.
    static std::string realHomeDirectory();
    /// Ends the program. Unlike quit() it asks no window first: ours answer every close by hiding.
    static void terminate() { exit(0); }
    /// Ends the program in the same way; whoever runs it starts it again on this exit code.
    static void restart() { exit(exitCodeForRestart); }
    static constexpr int exitCodeForRestart = 1000;
    /// Not owned; both null while there are none.
    void setKeyDispatcher(KeyDispatcher* dispatcher, KeyEventReader* keyEvents) {
        dispatcher_ = dispatcher;
        keyEvents_ = keyEvents;
    }

    /// From now on input reaches that window alone, or no window if it is null, and no window can be closed
    /// but it; what comes for others is dropped.
    void restrictInputTo(const QWidget* window);
    void liftRestriction() { restricted_ = false; }

    bool notify(QObject* receiver, QEvent* event) override;

  private:
    bool dispatchKey(QKeyEvent& event);
    bool isAdmitted(const QObject* receiver, const QEvent& event) const;

    bool restricted_ = false;
    const QWidget* inputWindow_ = nullptr;
    KeyDispatcher* dispatcher_ = nullptr;
    KeyEventReader* keyEvents_ = nullptr;
    /// The one that was dispatched and is on its way to its widget; null when there is none.
    const QEvent* keyUnderWay_ = nullptr;
};

} // namespace brimwick

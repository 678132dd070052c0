#include "platform/linux/dbus/DBusNotificationService.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

#include <chrono>
#include <iostream>

namespace brimwick {

namespace {

constexpr const char* identifier = "org.brimwick.Brimwick";
constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";
/// The bus itself lets a program await no more than a hundred or so replies.
constexpr std::size_t mostInFlight = 32;
/// Some services take a twentieth of a second for each notification, and starting one takes its time too.
constexpr std::chrono::milliseconds replyTime = std::chrono::minutes(2);
constexpr uchar lowUrgency = 0;
constexpr uchar normalUrgency = 1;
constexpr int serviceDecidesWhenItExpires = -1;

bool isControl(QChar character) {
    return character < u' ' && character != u'\n' && character != u'\t';
}

/// Valid and printable whatever bytes a file name in it has.
QString displayable(const std::string& text) {
    QString displayable = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    for (QChar& character : displayable)
        if (isControl(character)) character = QChar::ReplacementCharacter;
    return displayable;
}

QString escaped(QString text) {
    return text.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;");
}

QDBusMessage notifyCall(const DesktopNotification& notification) {
    auto call = QDBusMessage::createMethodCall(service, path, service, "Notify");
    const QVariantMap hints{
        {"urgency", QVariant::fromValue(notification.transient ? lowUrgency : normalUrgency)},
        {"transient", notification.transient},
        {"desktop-entry", identifier},
    };
    call << "Brimwick" << uint{0} << identifier << displayable(notification.summary)
         << escaped(displayable(notification.body)) << QStringList() << hints << serviceDecidesWhenItExpires;
    return call;
}

void writeLine(const DesktopNotification& notification) {
    const QString line = displayable(notification.summary + ": " + notification.body).replace(u'\n', u' ');
    std::cerr << line.toStdString() << std::endl;
}

} // namespace

DBusNotificationService::DBusNotificationService(const QDBusConnection& bus, Fallback fallback)
    : bus_(bus), fallback_(std::move(fallback)) {}

DBusNotificationService::~DBusNotificationService() {
    for (const DesktopNotification& notification : waiting_) writeLine(notification);
}

void DBusNotificationService::deliver(const DesktopNotification& notification) {
    waiting_.push_back(notification);
    handOver();
}

void DBusNotificationService::handOver() {
    while (true) {
        while (!handedOver_.empty() && handedOver_.front().call.isFinished()) {
            const HandedOver answered = std::move(handedOver_.front());
            handedOver_.pop_front();
            if (answered.call.isError()) deliverElsewhere(answered.notification);
        }
        if (waiting_.empty() || handedOver_.size() >= mostInFlight) return;
        const DesktopNotification next = std::move(waiting_.front());
        waiting_.pop_front();
        send(next);
    }
}

void DBusNotificationService::send(const DesktopNotification& notification) {
    // Without a connection a call would never finish.
    const QDBusPendingCall call =
        bus_.isConnected()
            ? bus_.asyncCall(notifyCall(notification), static_cast<int>(replyTime.count()))
            : QDBusPendingCall::fromError(QDBusError(QDBusError::Disconnected, "There is no session bus."));
    handedOver_.push_back({.notification = notification, .call = call});
    if (call.isFinished()) return;
    auto* answer = new QDBusPendingCallWatcher(call, &answers_);
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, &answers_, [this, answer] {
        answer->deleteLater();
        handOver();
    });
}

void DBusNotificationService::deliverElsewhere(const DesktopNotification& notification) {
    writeLine(notification);
    if (fallback_) fallback_(notification);
}

} // namespace brimwick

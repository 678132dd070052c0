#include "app/QtMainLoop.h"

#include <QMetaObject>

namespace brimwick {

void QtMainLoop::post(std::function<void()> task) {
    QMetaObject::invokeMethod(&receiver_, std::move(task), Qt::QueuedConnection);
}

} // namespace brimwick

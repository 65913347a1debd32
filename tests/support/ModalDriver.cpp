#include "tests/support/ModalDriver.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QTest>
#include <QTimer>

namespace orvista::testing {

namespace {

int& pendingModals() {
    static int count = 0;
    return count;
}

class ModalWatch final : public QTimer {
public:
    ModalWatch(QString name, std::function<void(QWidget*)> act)
        : QTimer(qApp), name_(std::move(name)), act_(std::move(act)), deadline_(10'000) {
        ++pendingModals();
        callOnTimeout(this, [this] { look(); });
        start(1);
    }

private:
    void look() {
        QWidget* const modal = QApplication::activeModalWidget();
        if (modal && modal->objectName() == name_ && modal->isVisible()) {
            stop();
            --pendingModals();
            deleteLater();
            act_(modal);
        } else if (deadline_.hasExpired()) {
            stop();
            deleteLater();
            // A dialog of another name must not hold the test up for ever.
            if (modal)
                modal->close();
            QTest::qFail(qPrintable("no modal window " + name_ + ", but " +
                                    (modal ? modal->objectName() : QStringLiteral("none"))),
                         __FILE__, __LINE__);
        }
    }

    QString name_;
    std::function<void(QWidget*)> act_;
    QDeadlineTimer deadline_;
};

} // namespace

void onModal(const QString& name, std::function<void(QWidget*)> act) {
    new ModalWatch(name, std::move(act));
}

bool allModalsServed() {
    return pendingModals() == 0;
}

} // namespace orvista::testing

#include "tests/support/ModalDriver.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDialog>
#include <QEvent>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <deque>
#include <utility>

namespace orvista::testing {

namespace {

constexpr int deadlineMilliseconds = 10'000;
constexpr const char* servedProperty = "orvistaServed";

/// A dialog must not hold the test up for ever; a question box takes no close().
void dismiss(QWidget* modal) {
    if (auto* const dialog = qobject_cast<QDialog*>(modal))
        dialog->done(QDialog::Rejected);
    else
        modal->close();
}

class ModalQueue final : public QObject {
public:
    static ModalQueue& instance() {
        static QPointer<ModalQueue> queue;
        if (!queue)
            queue = new ModalQueue;
        return *queue;
    }

    void add(const QString& name, std::function<void(QWidget*)> act) {
        waiting_.push_back({name, std::move(act)});
        deadline_.setRemainingTime(deadlineMilliseconds);
        schedule();
    }
    bool isEmpty() const { return waiting_.empty(); }

protected:
    /// The same window may be shown again later; then it counts anew.
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Hide) {
            watched->setProperty(servedProperty, {});
            watched->removeEventFilter(this);
        }
        return false;
    }

private:
    struct Waiting {
        QString name;
        std::function<void(QWidget*)> act;
    };

    ModalQueue() : QObject(qApp) {}

    /// One timer for each look: a timer does not fire again while its handler runs a nested event loop.
    void schedule() {
        if (std::exchange(scheduled_, true))
            return;
        QTimer::singleShot(1, this, [this] {
            scheduled_ = false;
            if (!waiting_.empty())
                look();
        });
    }

    void look() {
        QWidget* const modal = QApplication::activeModalWidget();
        if (modal && modal->isVisible() && !modal->property(servedProperty).toBool()) {
            const auto found = std::find_if(waiting_.begin(), waiting_.end(),
                                            [&](const Waiting& w) { return w.name == modal->objectName(); });
            if (found != waiting_.end()) {
                const auto act = std::move(found->act);
                waiting_.erase(found);
                serve(modal, act);
                return;
            }
        }
        if (deadline_.hasExpired())
            giveUp(modal);
        else
            schedule();
    }

    void serve(QPointer<QWidget> modal, const std::function<void(QWidget*)>& act) {
        modal->setProperty(servedProperty, true);
        modal->installEventFilter(this);
        deadline_.setRemainingTime(deadlineMilliseconds);
        schedule(); // `act` may open a further dialog, in an event loop of its own
        act(modal);
        deadline_.setRemainingTime(deadlineMilliseconds);
        // A check that failed inside `act` has left it before its closing click.
        if (QTest::currentTestFailed() && modal && modal->isVisible())
            dismiss(modal);
    }

    void giveUp(QWidget* modal) {
        const QString missing = waiting_.empty() ? QString() : waiting_.front().name;
        waiting_.clear();
        QTest::qFail(qPrintable("no modal window " + missing + ", but " +
                                (modal ? modal->objectName() : QStringLiteral("none"))),
                     __FILE__, __LINE__);
        if (modal)
            dismiss(modal);
    }

    std::deque<Waiting> waiting_;
    bool scheduled_ = false;
    QDeadlineTimer deadline_;
};

} // namespace

void onModal(const QString& name, std::function<void(QWidget*)> act) {
    ModalQueue::instance().add(name, std::move(act));
}

bool allModalsServed() {
    return ModalQueue::instance().isEmpty();
}

} // namespace orvista::testing

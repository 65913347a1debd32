#pragma once

#include "link/FleetResult.h"

#include <QObject>
#include <QProcess>
#include <QString>

#include <vector>

namespace orvista {

class JsonValue;

/// A running `orvista upload --json`, and what it tells. It ends with the object.
class FleetProcess final : public QObject {
    Q_OBJECT
public:
    /// Where a display's transfer is.
    struct State {
        std::string name;
        QString word; ///< "sending", or how it ended
        QString file; ///< under way
        int files = 0;
        int of = 0; ///< 0 while it is not known
        QString reason;
    };

    explicit FleetProcess(QObject* parent = nullptr);
    ~FleetProcess() override;

    /// \param program path of orvista
    void start(const QString& program, const QStringList& arguments);
    /// Has it end its transfers as Ctrl+C does; ended() follows.
    void stop();
    /// The same, and waits for it.
    void stopNow();
    bool isRunning() const { return process_.state() != QProcess::NotRunning; }

signals:
    void changed(const orvista::FleetProcess::State& state);
    /// \param results of all displays; none when it could not do its work
    /// \param complaint what it said of that
    void ended(const std::vector<orvista::FleetResult>& results, const QString& complaint);

private:
    void takeLines();
    void takeResults(const JsonValue& results);
    void end();

    QProcess process_{this};
    std::vector<FleetResult> results_;
    bool isStarted_ = false;
};

} // namespace orvista

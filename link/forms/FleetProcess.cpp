#include "link/forms/FleetProcess.h"

#include "link/FleetFields.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <utility>

namespace orvista {

namespace {

/// A program that has nothing more to wait for ends at once; this is for a machine that is very busy.
constexpr int timeoutMilliseconds = 10'000;

QString text(const QJsonObject& object, const char* field) {
    return object.value(QLatin1String(field)).toString();
}

int number(const QJsonObject& object, const char* field) {
    return object.value(QLatin1String(field)).toInt();
}

} // namespace

FleetProcess::FleetProcess(QObject* parent) : QObject(parent) {
    connect(&process_, &QProcess::readyReadStandardOutput, this, &FleetProcess::takeLines);
    connect(&process_, &QProcess::finished, this, &FleetProcess::end);
    connect(&process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) // nothing will finish
            end();
    });
}

FleetProcess::~FleetProcess() {
    process_.disconnect(this);
    stopNow();
}

void FleetProcess::start(const QString& program, const QStringList& arguments) {
    results_.clear();
    isStarted_ = true;
    process_.start(program, arguments);
}

void FleetProcess::stop() {
    process_.closeWriteChannel();
}

void FleetProcess::stopNow() {
    stop();
    if (!isRunning() || process_.waitForFinished(timeoutMilliseconds))
        return;
    process_.kill();
    process_.waitForFinished(timeoutMilliseconds);
}

void FleetProcess::takeLines() {
    while (process_.canReadLine()) {
        const QJsonObject object = QJsonDocument::fromJson(process_.readLine()).object();
        if (object.contains(QLatin1String(fleetFields::results)))
            takeResults(object);
        else
            emit changed({text(object, fleetFields::name).toStdString(), text(object, fleetFields::state),
                          text(object, fleetFields::file), number(object, fleetFields::files),
                          number(object, fleetFields::of), text(object, fleetFields::reason)});
    }
}

void FleetProcess::takeResults(const QJsonObject& document) {
    for (const QJsonValue value : document.value(QLatin1String(fleetFields::results)).toArray()) {
        const QJsonObject result = value.toObject();
        const auto outcome = outcomeOfWord(text(result, fleetFields::result).toStdString());
        results_.push_back(
            {text(result, fleetFields::name).toStdString(),
             text(result, fleetFields::address).toStdString(),
             {outcome.value_or(FleetOutcome::Failed), text(result, fleetFields::reason).toStdString(),
              static_cast<std::size_t>(number(result, fleetFields::files))},
             result.value(QLatin1String(fleetFields::seconds)).toDouble()});
    }
}

void FleetProcess::end() {
    if (!std::exchange(isStarted_, false))
        return;
    takeLines();
    QString complaint = QString::fromUtf8(process_.readAllStandardError()).trimmed();
    if (complaint.isEmpty() && results_.empty())
        complaint = process_.errorString();
    emit ended(results_, complaint);
}

} // namespace orvista

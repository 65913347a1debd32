#include "link/forms/FleetProcess.h"

#include "link/FleetFields.h"
#include "model/JsonReader.h"

#include <limits>
#include <utility>

namespace orvista {

namespace {

/// A program that has nothing more to wait for ends at once; this is for a machine that is very busy.
constexpr int timeoutMilliseconds = 10'000;

// What a field does not hold is empty, or 0.

std::string text(const JsonValue& object, const char* field) {
    const JsonValue* const value = object.member(field);
    const std::string* const held = value ? value->text() : nullptr;
    return held ? *held : std::string();
}

QString shownText(const JsonValue& object, const char* field) {
    return QString::fromStdString(text(object, field));
}

int count(const JsonValue& object, const char* field) {
    const JsonValue* const value = object.member(field);
    const auto held = value ? value->whole(0, std::numeric_limits<int>::max()) : std::nullopt;
    return static_cast<int>(held.value_or(0));
}

double seconds(const JsonValue& object) {
    const JsonValue* const value = object.member(fleetFields::seconds);
    return value ? value->number().value_or(0) : 0;
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
        const JsonValue line = readJson(process_.readLine().toStdString()).value;
        if (const JsonValue* const results = line.member(fleetFields::results))
            takeResults(*results);
        else
            emit changed({text(line, fleetFields::name), shownText(line, fleetFields::state),
                          shownText(line, fleetFields::file), count(line, fleetFields::files),
                          count(line, fleetFields::of), shownText(line, fleetFields::reason)});
    }
}

void FleetProcess::takeResults(const JsonValue& results) {
    const JsonValue::Array* const list = results.array();
    if (!list)
        return;
    for (const JsonValue& result : *list) {
        const auto outcome = outcomeOfWord(text(result, fleetFields::result));
        results_.push_back({text(result, fleetFields::name),
                            text(result, fleetFields::address),
                            {outcome.value_or(FleetOutcome::Failed), text(result, fleetFields::reason),
                             static_cast<std::size_t>(count(result, fleetFields::files))},
                            seconds(result)});
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

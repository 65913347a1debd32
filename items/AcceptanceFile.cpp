#include "items/AcceptanceFile.h"

#include "items/ProjectNotes.h"
#include "model/Files.h"
#include "model/JsonReader.h"
#include "model/JsonText.h"
#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/UtcTime.h"

#include <stdexcept>
#include <system_error>
#include <utility>

namespace orvista {

namespace {

constexpr int acceptanceVersion = 1;

/// What is wrong with the file.
class BadAcceptance : public std::invalid_argument {
public:
    using std::invalid_argument::invalid_argument;
};

const std::string& acceptanceText(const JsonValue& object, std::string_view key) {
    const JsonValue* const value = object.member(key);
    const std::string* const text = value ? value->text() : nullptr;
    if (text == nullptr)
        throw BadAcceptance(quotation(key) + " is not a text");
    if (const std::string fault = lineFault(*text, longestRemark); !fault.empty())
        throw BadAcceptance(quotation(key) + " " + fault);
    return *text;
}

const std::string& acceptanceTime(const JsonValue& object) {
    const std::string& time = acceptanceText(object, "time");
    if (!utcMoment(time))
        throw BadAcceptance(quotation(time) + " is not a time such as 2026-11-22T03:15:00Z");
    return time;
}

SeenResult seenResult(const std::string& text) {
    for (const SeenResult result : {SeenResult::AsShown, SeenResult::Wrong, SeenResult::Skipped})
        if (seenResultText(result) == text)
            return result;
    throw BadAcceptance(quotation(text) + " is not a result");
}

SeenMessage seenMessage(const JsonMember& entry) {
    const auto message = messageNamed(entry.key);
    if (!message)
        throw BadAcceptance(quotation(entry.key) + " is not a message");
    const JsonValue& value = entry.value;
    return {*message, seenResult(acceptanceText(value, "result")),
            value.member("remark") ? acceptanceText(value, "remark") : std::string(), acceptanceTime(value)};
}

void expectOurForm(const JsonReading& reading) {
    if (!reading.fault.empty())
        throw BadAcceptance(reading.fault);
    if (!reading.doubledKeys.empty())
        throw BadAcceptance(reading.doubledKeys.front());
    const JsonValue* const version = reading.value.member("version");
    if (version == nullptr || !version->whole(acceptanceVersion, acceptanceVersion))
        throw BadAcceptance("its \"version\" is not " + decimalText(acceptanceVersion));
}

Acceptance acceptanceOf(const JsonValue& document) {
    Acceptance acceptance{acceptanceText(document, "fingerprint"),
                          acceptanceText(document, "address"),
                          acceptanceTime(document),
                          acceptanceText(document, "name"),
                          {}};
    const JsonValue* const messages = document.member("messages");
    if (messages == nullptr || messages->object() == nullptr)
        throw BadAcceptance("its \"messages\" are not an object");
    for (const JsonMember& entry : *messages->object()) {
        SeenMessage seen = seenMessage(entry);
        if (acceptance.of(seen.message) != nullptr)
            throw BadAcceptance(nameOf(seen.message) + " stands there twice");
        acceptance.messages.push_back(std::move(seen));
    }
    return acceptance;
}

} // namespace

AcceptanceReading readAcceptance(std::string_view bytes) {
    if (bytes.size() > mostAcceptanceBytes)
        return {std::nullopt, "it is longer than " + decimalText(mostAcceptanceBytes >> 20) + " MB"};
    try {
        const JsonReading reading = readJson(bytes);
        expectOurForm(reading);
        return {acceptanceOf(reading.value), {}};
    } catch (const BadAcceptance& bad) {
        return {std::nullopt, bad.what()};
    }
}

std::string acceptanceBytes(const Acceptance& acceptance) {
    JsonValue::Object messages;
    for (const SeenMessage& seen : acceptance.messages)
        messages.push_back({nameOf(seen.message), JsonValue::Object{{"result", seenResultText(seen.result)},
                                                                    {"remark", seen.remark},
                                                                    {"time", seen.time}}});
    return jsonText(JsonValue::Object{{"version", acceptanceVersion},
                                      {"fingerprint", acceptance.fingerprint},
                                      {"address", acceptance.address},
                                      {"time", acceptance.time},
                                      {"name", acceptance.name},
                                      {"messages", std::move(messages)}});
}

AcceptanceReading readAcceptanceFile(const std::string& path) {
    try {
        FileSource source(path);
        return readAcceptance(bytesUpTo(source, mostAcceptanceBytes + 1));
    } catch (const std::system_error& failure) {
        return {std::nullopt, failure.code().message()};
    }
}

std::string acceptanceFileName(const std::string& project) {
    return project + "-accepted.json";
}

} // namespace orvista

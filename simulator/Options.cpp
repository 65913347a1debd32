#include "simulator/Options.h"

#include "widgets/PathText.h"

#include <QCommandLineParser>
#include <QDateTime>
#include <array>
#include <string_view>
#include <utility>

namespace orvista {

namespace {

constexpr std::array<std::pair<std::string_view, ModbusFault>, 6> modbusFaults{
    {{"refuse", ModbusFault::Refuse},
     {"close", ModbusFault::CloseAtOnce},
     {"reset", ModbusFault::Reset},
     {"no-answer", ModbusFault::NoAnswer},
     {"exception", ModbusFault::Exception},
     {"garbage", ModbusFault::Garbage}}};

constexpr std::array<std::pair<std::string_view, TransferFault>, 3> transferFaults{
    {{"refuse", TransferFault::Refuse}, {"hang-up", TransferFault::HangUp}, {"stall", TransferFault::Stall}}};

void addOptions(QCommandLineParser& parser) {
    parser.addHelpOption();
    parser.addVersionOption();
    const QString modbusPort = QString::number(DeviceSettings().modbusPort);
    const QString transferPort = QString::number(DeviceSettings().transferPort);
    parser.addOptions({
        {"modbus-port", QStringLiteral("Modbus/TCP port, 0 for any free one (%1).").arg(modbusPort), "port",
         modbusPort},
        {"transfer-port", QStringLiteral("File transfer port, 0 for any free one (%1).").arg(transferPort),
         "port", transferPort},
        {"listen", "Address to listen on (127.0.0.1).", "address", "127.0.0.1"},
        {"root", "Folder of the device's files; without it the device starts empty and forgets.", "folder"},
        {"columns", "Dots across the panel (128).", "count", "128"},
        {"clock", "Let the device's clock stand at a time, such as 2026-01-31T14:05:00.", "time"},
        {"headless", "Run without a window."},
        {"log", "Print every request."},
        {"snapshot", "Write a picture of the panel when the program ends; see --at.", "file.png"},
        {"at",
         "Write the picture at the start and after every change, as the panel looks that many "
         "milliseconds after its messages began.",
         "ms"},
        {"fault", "Modbus fault: refuse, close, reset, no-answer, exception or garbage.", "fault"},
        {"exception", "Exception code that --fault exception answers, 1 to 11 (4).", "code", "4"},
        {"delay", "Perform and answer Modbus requests that much later.", "ms", "0"},
        {"fail-file", "Let the nth file of every file transfer fail.", "n", "0"},
        {"fail-how", "How it fails: refuse, hang-up or stall (refuse).", "how", "refuse"},
    });
    // For the editor, which starts the program.
    QCommandLineOption untilInputEnds("until-input-ends");
    QCommandLineOption removeRoot("remove-root");
    QCommandLineOption beside("beside", {}, "x,y,width,height");
    for (QCommandLineOption* const option : {&untilInputEnds, &removeRoot, &beside}) {
        option->setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOption(*option);
    }
}

qint64 number(const QCommandLineParser& parser, const char* option, qint64 lowest, qint64 highest) {
    bool isNumber = false;
    const qint64 value = parser.value(option).toLongLong(&isNumber);
    if (isNumber && value >= lowest && value <= highest)
        return value;
    throw UsageError(QStringLiteral("--%1 takes a number from %2 to %3")
                         .arg(QLatin1String(option))
                         .arg(lowest)
                         .arg(highest)
                         .toStdString());
}

template <typename Value, std::size_t count>
Value choice(const QCommandLineParser& parser, const char* option,
             const std::array<std::pair<std::string_view, Value>, count>& choices) {
    const std::string given = parser.value(option).toStdString();
    for (const auto& [name, value] : choices) {
        if (name == given)
            return value;
    }
    throw UsageError("--" + std::string(option) + " does not know \"" + given + "\"");
}

QRect rectangle(const QString& text) {
    const QStringList numbers = text.split(u',');
    if (numbers.size() != 4)
        throw UsageError("--beside takes x,y,width,height");
    return {numbers[0].toInt(), numbers[1].toInt(), numbers[2].toInt(), numbers[3].toInt()};
}

DeviceSettings deviceSettings(const QCommandLineParser& parser) {
    DeviceSettings settings;
    settings.modbusPort = static_cast<quint16>(number(parser, "modbus-port", 0, 65535));
    settings.transferPort = static_cast<quint16>(number(parser, "transfer-port", 0, 65535));
    settings.columns = static_cast<int>(number(parser, "columns", 1, PanelSize::maximumColumns));
    settings.root = pathFromShown(parser.value("root"));
    if (!settings.listen.setAddress(parser.value("listen")))
        throw UsageError("--listen takes a numeric address");
    if (parser.isSet("clock")) {
        const QDateTime clock = QDateTime::fromString(parser.value("clock"), Qt::ISODate);
        if (!clock.isValid())
            throw UsageError("--clock takes a time such as 2026-01-31T14:05:00");
        settings.clock = clock;
    }
    return settings;
}

Faults faultsAskedFor(const QCommandLineParser& parser) {
    constexpr int hour = 3'600'000;
    Faults faults;
    if (parser.isSet("fault"))
        faults.modbus = choice(parser, "fault", modbusFaults);
    faults.exceptionCode = static_cast<unsigned>(number(parser, "exception", 1, 11));
    faults.answerDelay = static_cast<int>(number(parser, "delay", 0, hour));
    faults.failingFile = static_cast<int>(number(parser, "fail-file", 0, 100'000));
    faults.transfer = choice(parser, "fail-how", transferFaults);
    return faults;
}

} // namespace

Options parseOptions(const QStringList& arguments) {
    QCommandLineParser parser;
    parser.setApplicationDescription("A simulated Ulvo LX-400D message display.");
    addOptions(parser);
    if (!parser.parse(arguments))
        throw UsageError(parser.errorText().toStdString());
    if (parser.isSet("help"))
        parser.showHelp();
    if (parser.isSet("version"))
        parser.showVersion();
    if (!parser.positionalArguments().isEmpty())
        throw UsageError("what is \"" + parser.positionalArguments().constFirst().toStdString() + "\"?");
    Options options;
    options.device = deviceSettings(parser);
    options.faults = faultsAskedFor(parser);
    options.headless = parser.isSet("headless");
    options.printLog = parser.isSet("log");
    options.untilInputEnds = parser.isSet("until-input-ends");
    options.removeRoot = parser.isSet("remove-root");
    if (parser.isSet("beside"))
        options.beside = rectangle(parser.value("beside"));
    options.snapshot = parser.value("snapshot");
    if (parser.isSet("at"))
        options.moment = number(parser, "at", 0, std::numeric_limits<qint64>::max());
    return options;
}

} // namespace orvista

#include "simulator/SimulatedDevice.h"

#include "display/FolderBitmaps.h"
#include "display/RasterAt.h"
#include "model/DeviceFiles.h"
#include "model/Item.h"
#include "model/Windows1252.h"
#include "widgets/DeviceClock.h"

#include <functional>
#include <utility>

namespace orvista {

namespace {

/// The device has nobody to ask: what the readers say goes into its log.
class LoggedMessages final : public Messages {
public:
    explicit LoggedMessages(std::function<void(const QString&)> log) : log_(std::move(log)) {}
    void show(MessageIcon, const std::string& text) override { log_(QString::fromStdString(text)); }
    bool askYesNo(const std::string&) override { return false; }
    Answer askYesNoCancel(const std::string&) override { return Answer::Cancel; }

private:
    std::function<void(const QString&)> log_;
};

void resetProject(Project& project) {
    project.ResetAddressMap();
    project.ResetVariables();
    project.ClearMessages();
}

void writeDefaults(const Project& project, DeviceMemory& memory) {
    const DisplayValues defaults = defaultValues(project);
    for (std::size_t index = 0; index < floatVariableCount; ++index)
        memory.setFloat(addressOf(project, {Kind::Float, index}), defaults.floats[index]);
    for (std::size_t index = 0; index < booleanVariableCount; ++index)
        memory.setCoil(addressOf(project, {Kind::Boolean, index}), defaults.booleans[index]);
}

} // namespace

SimulatedDevice::SimulatedDevice(const DeviceSettings& settings, const Faults& faults, QObject* parent)
    : QObject(parent),
      settings_(settings),
      faults_(faults),
      folder_(settings.root),
      programme_({settings.columns}, fieldFormats(project_)),
      modbus_(memory_, faults_),
      transfer_(folder_, faults_) {
    resetProject(project_);
    connect(&modbus_, &ModbusService::logged, this, &SimulatedDevice::logged);
    connect(&transfer_, &FtpService::logged, this, &SimulatedDevice::logged);
    connect(&modbus_, &ModbusService::memoryWritten, this, &SimulatedDevice::takeMemory);
    connect(&transfer_, &FtpService::uploadFinished, this, &SimulatedDevice::loadFiles);
    beginProgramme();
}

void SimulatedDevice::setFaults(const Faults& faults) {
    faults_ = faults;
    modbus_.applyFaults();
}

void SimulatedDevice::loadFiles() {
    resetProject(project_);
    playList_ = PlayList::inOrder();
    if (folder_.list().empty()) {
        note(tr("The device holds no files"));
    } else {
        LoggedMessages messages([this](const QString& words) { note(words); });
        const PathRules rules = PathRules::native();
        ConfigModule::readDeviceFiles(folder_.path(), project_, {rules, messages}, modbusAdrFile.name);
        if (const std::optional<std::string> list = folder_.read(defaultPlsFile.name))
            playList_ = readPlayList(*list);
        for (const PlayListRemark& remark : playList_.remarks)
            noteIdleLine(std::string(defaultPlsFile.name), remark.line, remark.text);
        note(tr("The files are shown"));
    }
    writeDefaults(project_, memory_);
    beginProgramme();
    emit changed();
}

void SimulatedDevice::switchEverythingOff() {
    memory_.coils.assign(DeviceMemory::size, 0);
    memory_.registers.assign(DeviceMemory::size, 0);
    takeMemory();
}

MessageCoils SimulatedDevice::messageCoils() const {
    MessageCoils coils;
    for (std::size_t index = 0; index < emergencyMessageCount; ++index)
        coils.emergency[index] = memory_.coil(addressOf(project_, {Kind::Emergency, index}));
    for (std::size_t index = 0; index < regularMessageCount; ++index)
        coils.regular[index] = memory_.coil(addressOf(project_, {Kind::Regular, index}));
    return coils;
}

void SimulatedDevice::takeMemory() {
    if (messageCoils() != shown_)
        beginProgramme();
    emit changed();
}

void SimulatedDevice::beginProgramme() {
    shown_ = messageCoils();
    const FolderBitmaps bitmaps(folder_.path(), FolderBitmaps::Links::LeftOut);
    programme_ = deviceProgramme(project_, shown_, playList_, bitmaps, {settings_.columns});
    running_.start();
    for (const ProgrammeRemark& remark : programme_.remarks()) {
        if (remark.line == 0)
            note(QString::fromStdString(nameOf(remark.message) + ": " + utf8FromWindows1252(remark.text)));
        else
            noteIdleLine(nameOf(remark.message), remark.line, remark.text);
    }
}

DisplayValues SimulatedDevice::values() const {
    DisplayValues values;
    for (std::size_t index = 0; index < floatVariableCount; ++index)
        values.floats[index] = memory_.floatAt(addressOf(project_, {Kind::Float, index}));
    for (std::size_t index = 0; index < booleanVariableCount; ++index)
        values.booleans[index] = memory_.coil(addressOf(project_, {Kind::Boolean, index}));
    values.clock = localTime(settings_.clock.value_or(QDateTime::currentDateTime()));
    return values;
}

LedRaster SimulatedDevice::rasterAt(qint64 milliseconds) const {
    return orvista::rasterAt(programme_, values(), milliseconds);
}

void SimulatedDevice::note(const QString& words) {
    emit logged({QDateTime::currentDateTime(), {}, {}, words});
}

void SimulatedDevice::noteIdleLine(const std::string& where, std::size_t line, const std::string& text) {
    note(tr("%1, line %2 does nothing: %3")
             .arg(QString::fromStdString(where))
             .arg(line)
             .arg(QString::fromStdString(utf8FromWindows1252(text))));
}

} // namespace orvista

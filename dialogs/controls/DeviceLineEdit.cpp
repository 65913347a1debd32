#include "dialogs/controls/DeviceLineEdit.h"

#include "dialogs/controls/DeviceText.h"

#include <QValidator>

#include <limits>

namespace orvista {

namespace {

class DeviceCharacters final : public QValidator {
public:
    using QValidator::QValidator;
    State validate(QString& text, int& /*position*/) const override {
        return deviceBytes(text) ? Acceptable : Invalid;
    }
};

} // namespace

DeviceLineEdit::DeviceLineEdit(QWidget* parent) : QLineEdit(parent) {
    setMaxLength(std::numeric_limits<int>::max());
    setValidator(new DeviceCharacters(this));
}

void DeviceLineEdit::setBytes(const std::string& bytes) { setText(shownLine(bytes)); }

std::string DeviceLineEdit::bytes() const { return deviceBytes(text()).value_or(std::string{}); }

} // namespace orvista

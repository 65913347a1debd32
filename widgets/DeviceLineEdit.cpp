#include "widgets/DeviceLineEdit.h"

#include "widgets/DeviceText.h"

#include <QValidator>

#include <limits>

namespace orvista {

namespace {

/// What is pasted or dropped may hold line ends, which a one-line box must not take: one that ends the
/// insertion is dropped, one inside it becomes a blank.
void foldLineEnds(QString& text, int& position) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'\n' && text[i] != u'\r')
            continue;
        const qsizetype length = text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n' ? 2 : 1;
        const bool endsInsertion = i + length == position;
        text.replace(i, length, endsInsertion ? QString() : QStringLiteral(" "));
        if (position > i)
            position -= static_cast<int>(endsInsertion ? length : length - 1);
        if (endsInsertion)
            --i;
    }
}

/// The one gate of every way in: keys, paste, drop, input methods and assistive programs all end in the
/// validator, and an edit it refuses is taken back as a whole.
class DeviceCharacters final : public QValidator {
public:
    using QValidator::QValidator;
    State validate(QString& text, int& position) const override {
        if (!deviceBytes(text))
            return Invalid;
        foldLineEnds(text, position);
        showControls(text);
        return Acceptable;
    }
};

} // namespace

DeviceLineEdit::DeviceLineEdit(QWidget* parent) : QLineEdit(parent) {
    setMaxLength(std::numeric_limits<int>::max());
    setValidator(new DeviceCharacters(this));
}

void DeviceLineEdit::setBytes(const std::string& bytes) {
    setText(shownLine(bytes));
}

std::string DeviceLineEdit::bytes() const {
    return replacingDeviceBytes(text());
}

void DeviceLineEdit::explain(const QString& purpose) {
    setToolTip(tr("%1.\nOnly characters that the display can show are taken.").arg(purpose));
}

} // namespace orvista

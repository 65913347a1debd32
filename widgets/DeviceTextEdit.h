#pragma once

#include <QPlainTextEdit>

#include <string>

class QTextBlock;

namespace orvista {

/// The script box: fixed-width, many lines, only characters of the device's encoding, with undo. Every text
/// comes back as the same bytes, edited elsewhere or not; lines are joined by CR LF. Tab moves on. A
/// character that it refuses is named in a tool-tip at the cursor.
class DeviceTextEdit : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit DeviceTextEdit(QWidget* parent = nullptr);

    void setBytes(const std::string& bytes);
    std::string bytes() const;

    /// How many lines of its own font can always be seen.
    void setLeastLines(int lines);
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;
    QMimeData* createMimeDataFromSelection() const override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;

private:
    /// Positions in the document.
    struct Range {
        int first = 0;
        int end = 0;
    };
    void noteInsertion(int position, int removed, int added);
    void removeForeignCharacters();
    void cleanLine(const QTextBlock& block, Range range);
    void nameRefused(const QString& text);

    int leastLines_ = 1;
    Range insertion_;
    bool setting_ = false;
};

} // namespace orvista

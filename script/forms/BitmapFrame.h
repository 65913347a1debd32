#pragma once

#include <QGroupBox>

#include <string>

class QLabel;
class QLineEdit;
class QPushButton;

namespace orvista {

/// The choice of a bitmap. Its path is filled by browsing only.
class BitmapFrame : public QGroupBox {
    Q_OBJECT
public:
    /// Browsing starts in `projectFolder` (empty for a project without a folder).
    explicit BitmapFrame(QString projectFolder, QWidget* parent = nullptr);

    void enableBrowsing(bool enable);
    /// UTF-8; empty when nothing is chosen.
    std::string path() const;

signals:
    /// A bitmap was chosen and taken.
    void pathChosen();
    /// Also when it was emptied.
    void pathChanged();

private:
    void cmdBrowse_Click();
    void take(const QString& chosen);
    bool isUploaded(const QString& bitmap) const;

    QString projectFolder_;
    QLineEdit* txtPath;
    QPushButton* cmdBrowse;
    QLabel* lblNote;
};

} // namespace orvista

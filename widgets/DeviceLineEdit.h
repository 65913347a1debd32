#pragma once

#include <QLineEdit>

#include <string>

namespace orvista {

/// A one-line box whose text reaches a device file: it takes only characters the device's encoding has
/// (others are refused as they are typed or pasted), has no length limit and gives back every byte.
class DeviceLineEdit : public QLineEdit {
    Q_OBJECT
public:
    explicit DeviceLineEdit(QWidget* parent = nullptr);

    void setBytes(const std::string& bytes);
    std::string bytes() const;
    /// The box's tool-tip: what the box is for, and what it takes.
    void explain(const QString& purpose);
};

} // namespace orvista

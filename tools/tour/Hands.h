#pragma once

#include <QKeySequence>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <stdexcept>
#include <string>

namespace orvista::tour {

/// Works a window by mouse and keyboard, as a person does. Controls are found by their objectName; one that
/// is missing or takes no input throws std::logic_error.
class Hands {
public:
    explicit Hands(QWidget& window) : window_(window) {}

    template <typename Widget>
    Widget& find(const QString& name) const {
        auto* const widget = window_.findChild<Widget*>(name);
        if (!widget)
            throw std::logic_error("no " + name.toStdString());
        return *widget;
    }

    void click(const QString& buttonName) const;
    /// Clicks the toolbar button of that key.
    void clickTool(const QString& key) const;
    /// Replaces the text of a box by typing.
    void type(const QString& boxName, const QString& text) const;
    /// The same with lines, each on a line of its own.
    void typeLines(const QString& boxName, const QStringList& lines) const;
    /// Clicks Save or Open in a file dialog, whose buttons have no names.
    void acceptFile() const;
    /// Picks an item of a drop-down list by the arrow keys.
    void pick(const QString& listName, const QString& item) const;
    /// Clicks the node whose key, or else whose text in the first column, is `key`.
    void clickNode(const QString& treeName, const QString& key) const;
    void press(const QKeySequence& keys) const;

    QString text(const QString& boxName) const;
    bool isEnabled(const QString& widgetName) const { return find<QWidget>(widgetName).isEnabled(); }
    QWidget& window() const { return window_; }

private:
    QWidget& usable(const QString& name) const;

    QWidget& window_;
};

} // namespace orvista::tour

#pragma once

#include "script/MessagePage.h"

#include <QGroupBox>

#include <array>
#include <functional>

class QGridLayout;
class QStringListModel;

namespace orvista {

class DropDownList;
class ListEntries;

/// The four field rows: what each live field shows and in which colours.
class VariableFrame : public QGroupBox {
    Q_OBJECT
public:
    explicit VariableFrame(QWidget* parent = nullptr);

    /// Enables the first `count` rows and disables the rest.
    void enableRows(std::size_t count);
    /// \param toolTipOf the tool-tip of a variable in the lists, as markup; empty for none
    void explainVariables(std::function<QString(const QString&)> toolTipOf);
    void readInto(MessageForm& form) const;

private:
    struct Row {
        DropDownList* cbVar;
        DropDownList* cbVarFgClr;
        DropDownList* cbVarBgClr;
    };
    Row addRow(QGridLayout* grid, std::size_t index);

    ListEntries* sources_; ///< shared by the four rows, as the colours are
    QStringListModel* colours_;
    std::array<Row, fieldSlotCount> rows_;
};

} // namespace orvista

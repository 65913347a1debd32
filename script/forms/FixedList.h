#pragma once

#include "widgets/DeviceText.h"
#include "widgets/DropDownList.h"

#include <QStringListModel>

#include <cstddef>
#include <functional>
#include <string>

class QGridLayout;

namespace orvista {

/// The entries of a list. What is typed finds an entry also after its leading blank; an entry that is just
/// that counts before longer ones.
class ListEntries final : public QStringListModel {
    Q_OBJECT
public:
    using QStringListModel::QStringListModel;
    QModelIndexList match(const QModelIndex& start, int role, const QVariant& value, int hits,
                          Qt::MatchFlags flags) const override;
    /// \param toolTipOf the tool-tip of an entry, as markup; empty for none
    void explain(std::function<QString(const QString&)> toolTipOf) { toolTipOf_ = std::move(toolTipOf); }
    QVariant data(const QModelIndex& index, int role) const override;

private:
    std::function<QString(const QString&)> toolTipOf_;
};

/// A model over `table`, for one list or for several that show the same.
template <typename Table>
ListEntries* listModel(const Table& table, QObject* parent) {
    QStringList texts;
    for (const auto& entry : table)
        texts += shownLine(std::string(entry.shown));
    return new ListEntries(texts, parent);
}

/// Names `list` and lets it show `model` with the entry at `position` (from 0) chosen.
void showFixedList(DropDownList* list, const QString& name, QStringListModel* model, std::size_t position);

/// The position of the chosen entry, from 0.
std::size_t chosenPosition(const DropDownList* list);

/// Puts a label and the list it belongs to into neighbouring cells, from column `column` on.
void addLabelledList(QGridLayout* grid, int row, int column, const QString& caption, DropDownList* list);

} // namespace orvista

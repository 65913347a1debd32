#pragma once

#include "items/ItemRows.h"
#include "items/forms/ItemPanel.h"

namespace orvista {

/// The panel "Variables": where each of them lies, how it is shown, and by which messages.
class VariablesPanel final : public ItemPanel {
    Q_OBJECT
public:
    explicit VariablesPanel(ItemSources sources);

protected:
    void read() override;
    std::size_t count() const override { return rows_.size(); }
    Item item(std::size_t row) const override { return rows_.at(row).item; }
    TableRow cells(std::size_t row) const override;

private:
    std::vector<VariableRow> rows_;
};

} // namespace orvista

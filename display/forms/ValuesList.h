#pragma once

#include "display/FieldValues.h"
#include "script/ShownFields.h"
#include "widgets/DropDownList.h"

#include <functional>
#include <optional>
#include <vector>

namespace orvista {

/// The list `cboPreviewValues`: with which values the fields of a message are shown. "Own…" asks for them.
class ValuesList final : public DropDownList {
    Q_OBJECT
public:
    /// \param fields of the message that is shown
    ValuesList(const Project& project, std::function<std::vector<ShownField>()> fields);

    /// Those chosen, for the project as it is.
    FieldValues values() const;

    /// What the display holds as far as that is known now. Without it "As the Display Has It" cannot be
    /// chosen, and Defaults take its place.
    void setHeld(const std::optional<DisplayValues>& held);

signals:
    void valuesChanged();

private:
    enum Row { Defaults, Widest, Smallest, On, Off, Held, Own };

    void choose(int row);
    bool askForOwn();

    const Project& project_;
    std::function<std::vector<ShownField>()> fields_;
    std::optional<DisplayValues> held_;
    OwnValues own_;
    int chosen_ = Defaults;
};

} // namespace orvista

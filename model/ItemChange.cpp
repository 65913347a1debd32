#include "model/ItemChange.h"

#include <algorithm>
#include <utility>

namespace orvista {

namespace {

std::size_t ownBytes(const ItemValue& value) {
    if (const auto* const script = std::get_if<std::string>(&value))
        return script->size();
    if (const auto* const variable = std::get_if<FloatVariable>(&value))
        return variable->name.size() + variable->defaultValue.size() + variable->width.size() +
               variable->precision.size();
    if (const auto* const variable = std::get_if<BooleanVariable>(&value))
        return variable->name.size() + variable->defaultValue.size() + variable->onText.size() +
               variable->offText.size();
    return 0;
}

template <typename Variable>
void keepName(const ItemValue& before, ItemValue& after) {
    if (const auto* const variable = std::get_if<Variable>(&before))
        std::get<Variable>(after).name = variable->name;
}

} // namespace

ItemChange::ItemChange(ItemState before, ItemValue after)
    : item_(std::move(before.item)), before_(std::move(before.value)), after_(std::move(after)) {
    if (before_.index() != after_.index())
        throw std::bad_variant_access();
    keepName<FloatVariable>(before_, after_);
    keepName<BooleanVariable>(before_, after_);
    if (auto* const script = std::get_if<std::string>(&before_))
        trim(*script, std::get<std::string>(after_));
}

void ItemChange::trim(std::string& before, std::string& after) {
    const auto firstDifferent = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    at_ = static_cast<std::size_t>(firstDifferent.first - before.begin());
    const auto lastDifferent =
        std::mismatch(before.rbegin(), std::make_reverse_iterator(firstDifferent.first), after.rbegin(),
                      std::make_reverse_iterator(firstDifferent.second));
    // Copies, which hold no more memory than they need.
    before = std::string(firstDifferent.first, lastDifferent.first.base());
    after = std::string(firstDifferent.second, lastDifferent.second.base());
}

void ItemChange::replace(Project& project, const ItemValue& old, const ItemValue& value) const {
    if (std::string* const script = scriptNamed(project, item_))
        script->replace(std::min(at_, script->size()), std::get<std::string>(old).size(),
                        std::get<std::string>(value));
    else
        setItem(project, {item_, value});
}

std::size_t ItemChange::bytes() const {
    return sizeof *this + item_.size() + ownBytes(before_) + ownBytes(after_);
}

} // namespace orvista

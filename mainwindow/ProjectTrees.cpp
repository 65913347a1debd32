#include "mainwindow/ProjectTrees.h"

#include "model/ItemKind.h"

namespace orvista::ProjectTrees {

namespace {

/// A group with a child for each item of a kind: its text is `childText` and the item's number.
struct Group {
    const char* key;
    const char* text;
    const ItemKind& kind;
    std::string_view childText;
};

void addGroup(ItemTree& tree, const Group& group) {
    QTreeWidgetItem* const node =
        tree.addNode(nullptr, QString::fromLatin1(group.key), QString::fromLatin1(group.text));
    const auto childText = QString::fromLatin1(group.childText.data(), qsizetype(group.childText.size()));
    for (std::size_t index = 0; index < group.kind.count; ++index)
        tree.addNode(node, QString::fromStdString(group.kind.key(index)),
                     childText + QString::number(index + 1));
    node->setExpanded(true);
}

} // namespace

void fillNavigationTree(ItemTree& trvSystem, const std::vector<MainPage>& pages) {
    QTreeWidgetItem* const root =
        trvSystem.addNode(nullptr, QStringLiteral("ROOT"), QStringLiteral("Orvista"));
    for (const MainPage& page : pages)
        trvSystem.addNode(root, QString::fromLatin1(page.nodeKey), QString::fromLatin1(page.nodeText));
    root->setExpanded(true);
}

void fillMessageTree(ItemTree& trvMsg) {
    addGroup(trvMsg, {"REGULAR", "Regular Message", regularMessages, "Regular"});
    addGroup(trvMsg, {"EMERGENCY", "Emergency Message", emergencyMessages, "Emergency"});
}

void fillVariableTree(ItemTree& trvVar) {
    addGroup(trvVar, {"REGISTER", "Register (Float)", floatVariables, floatVariables.word});
    addGroup(trvVar, {"COIL", "Coil (Boolean)", booleanVariables, booleanVariables.word});
}

} // namespace orvista::ProjectTrees

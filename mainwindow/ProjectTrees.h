#pragma once

#include "mainwindow/ItemTree.h"

/// The trees of the main window. They are filled once and never change: the device has a fixed number of
/// variables and messages, and their names are fixed.
namespace orvista::ProjectTrees {

/// The root "Orvista" and a node for each page.
void fillNavigationTree(ItemTree& trvSystem);
void fillMessageTree(ItemTree& trvMsg);
void fillVariableTree(ItemTree& trvVar);

/// The page a navigation node shows, or -1 when it shows none.
int pageOfNode(const QString& key);

} // namespace orvista::ProjectTrees

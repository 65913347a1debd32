#pragma once

#include <QIcon>

/// The program's own pictures, drawn when they are needed: sharp at every size, and in the colours of the
/// palette, so that they can be read in dark palettes too.
namespace orvista::ToolIcons {

QIcon newProject();
QIcon openProject();
QIcon saveProject();
QIcon upload();
QIcon download();

/// The program's icon: a small LED panel that shows an arrow. The same in every palette.
QIcon program();

} // namespace orvista::ToolIcons

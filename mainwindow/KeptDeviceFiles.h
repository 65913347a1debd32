#pragma once

#include <QString>
#include <QStringList>

#include <string>

namespace orvista {

/// Copies the device files of a project's folder, which are about to be replaced, into a new folder beside
/// the copies of unsaved work. Such folders go when they are as old as copies may get.
/// \param recoveryFolder made where it is not there; an empty one keeps nothing
/// \param folder of the project, UTF-8
/// \returns the names of the files that could not be kept
QStringList keepDeviceFiles(const QString& recoveryFolder, const std::string& folder);

} // namespace orvista

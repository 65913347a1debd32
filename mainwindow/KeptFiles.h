#pragma once

#include <QString>
#include <QStringList>

#include <string>

namespace orvista {

/// Copies of files that are about to be replaced: each time a new folder beside the copies of unsaved work.
/// Such folders go when they are as old as copies may get.

/// The device files of a project's folder.
/// \param recoveryFolder made where it is not there; an empty one keeps nothing
/// \param folder of the project, UTF-8
/// \returns the names of the files that could not be kept
QStringList keepDeviceFiles(const QString& recoveryFolder, const std::string& folder);

/// One project file.
/// \param path as on the disk, UTF-8
/// \returns the copy's path; empty when it could not be kept
QString keepProjectFile(const QString& recoveryFolder, const std::string& path);

} // namespace orvista

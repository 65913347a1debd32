#include "dialogs/NameableFolder.h"

#include "model/SystemPath.h"
#include "model/Utf8.h"
#include "widgets/PathText.h"

#include <QTemporaryDir>

#include <filesystem>

namespace orvista {

namespace {

/// The folder's own name, with a mark for each byte that is none of a text.
std::string linkName(const PathRules& rules, const std::string& folder) {
    const auto parts = rules.split(folder);
    QString name = shownPath(parts ? parts->name : folder);
    for (QChar& character : name)
        if (character.isSurrogate())
            character = u'_';
    return name.toStdString();
}

} // namespace

NameableFolder::NameableFolder(const PathRules& rules, std::string path)
    : rules_(rules), path_(std::move(path)), shown_(shownPath(path_)) {
    if (isUtf8(path_))
        return;
    auto place = std::make_unique<QTemporaryDir>(QDir::tempPath() + "/orvista-editor-XXXXXX");
    const std::string link =
        rules_.join(rules_.nativeForm(pathFromShown(place->path())), linkName(rules_, path_));
    std::error_code error;
    std::filesystem::create_directory_symlink(systemPath(path_), systemPath(link), error);
    if (error)
        return;
    shown_ = shownPath(link);
    place_ = std::move(place);
}

NameableFolder::~NameableFolder() = default;

std::string NameableFolder::meant(const QString& chosen) const {
    const std::string path = rules_.nativeForm(pathFromShown(chosen));
    const std::string before = rules_.join(pathFromShown(shown_), {});
    return place_ && path.starts_with(before) ? rules_.join(path_, path.substr(before.size())) : path;
}

} // namespace orvista

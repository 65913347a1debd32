#pragma once

#include "model/PathRules.h"

#include <QString>

#include <memory>
#include <string>

class QTemporaryDir;

namespace orvista {

/// A folder as Qt's file dialogs can name it. They know no path that is not UTF-8: such a folder is shown to
/// them through a link that goes with the object. Where no link can be made they start elsewhere, and what is
/// chosen there is taken as it is.
class NameableFolder {
public:
    /// \param path in native form, absolute
    NameableFolder(const PathRules& rules, std::string path);
    ~NameableFolder();

    /// For the dialog.
    const QString& shown() const { return shown_; }
    /// The path that the dialog's answer means.
    std::string meant(const QString& chosen) const;

private:
    PathRules rules_;
    std::string path_;
    std::unique_ptr<QTemporaryDir> place_; ///< of the link; null where the folder names itself
    QString shown_;
};

} // namespace orvista

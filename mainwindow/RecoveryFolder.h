#pragma once

#include "items/RecoveryFile.h"

#include <QDateTime>
#include <QLockFile>
#include <QString>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvista {

/// The folder in which every running editor keeps one copy of its unsaved work. A lock beside the copy tells
/// whether its editor still runs; copies of ended ones lie there to be restored. Only regular files with
/// names as it gives them are read, counted or removed.
class RecoveryFolder {
public:
    /// Copies of ended editors are removed when they are older, and the oldest while all copies together
    /// are larger.
    static constexpr int keptDays = 30;
    static constexpr qint64 keptBytes = qint64{50} << 20;

    /// What copies are of, by the end of their names.
    static constexpr QLatin1String unsavedWork{".recovery"};
    static constexpr QLatin1String acceptances{".acceptance"};

    /// \param folder made with the first copy; an empty one keeps nothing
    /// \param suffix of the copies that this is about
    explicit RecoveryFolder(const QString& folder, QLatin1String suffix = unsavedWork)
        : folder_(folder), suffix_(suffix) {}

    /// Writes this editor's copy; the one before stays until the new one is whole. False when that failed.
    bool write(const std::string& bytes);
    /// Removes this editor's copy, if there is one.
    void remove();
    /// This editor's copy is like one of an ended editor from now on.
    void abandon();

    struct Copy {
        QString path;
        QDateTime written;
    };
    /// The copies of ended editors, newest first. Nothing is written for it.
    std::vector<Copy> abandoned() const;
    /// Those of other editors that still run.
    std::vector<Copy> held() const;
    /// Empty when the file is gone, or no regular file.
    static std::string bytesOf(const QString& path);
    /// Nothing when the file is gone, not whole, or no regular file.
    static std::optional<UnsavedWork> read(const QString& path);
    /// A later version of the program has written it.
    static bool isOfNewerVersion(const QString& path);
    /// Removes an abandoned copy. False where another editor has it, or it cannot be removed.
    static bool removeAbandoned(const QString& path);

    /// An abandoned copy that no other editor can take any more.
    struct ClaimedBytes {
        std::unique_ptr<QLockFile> lock; ///< null where the folder cannot be written
        std::string bytes;
    };
    /// Nothing when another editor was first.
    static std::optional<ClaimedBytes> claimBytes(const QString& path);
    /// The same of unsaved work.
    struct Claimed {
        QString path;
        std::unique_ptr<QLockFile> lock; ///< null where the folder cannot be written
        UnsavedWork work;
    };
    /// Nothing when another editor was first, or when it cannot be read.
    static std::optional<Claimed> claim(const QString& path);
    /// What was claimed is this editor's copy from now on, instead of its own. Without a lock it stays as it
    /// is.
    void adopt(Claimed claimed);

private:
    bool prepare();
    bool syncNames() const;
    std::vector<Copy> copies() const;
    void removeOld() const;
    void removeLeftovers() const;

    QString folder_;
    QLatin1String suffix_;
    QString path_; ///< of this editor's copy; empty before there was one
    std::unique_ptr<QLockFile> lock_;
};

} // namespace orvista

#pragma once

#include <QLockFile>
#include <QString>

#include <memory>

namespace orvista {

inline constexpr QLatin1String recoveryLockSuffix(".lock");

/// The lock of the editor whose copy, or what was to become one, is at `path`; not yet taken. It is stale
/// only when that editor has ended, however long it ran.
std::unique_ptr<QLockFile> recoveryLockOf(const QString& path);

/// True while an editor that runs holds that lock. Only looks: nothing is written. An editor on another
/// machine runs, as far as is known.
bool isRecoveryLockHeld(const QString& path);

} // namespace orvista

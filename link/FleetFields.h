#pragma once

/// What the fields of the JSON lines are called that `orvista upload --json` prints for each change of a
/// display, and at last for all of them. Programs of others read them: a name never changes.
namespace orvista::fleetFields {

inline constexpr const char* name = "name";
inline constexpr const char* address = "address";
inline constexpr const char* state = "state";
inline constexpr const char* file = "file";
inline constexpr const char* files = "files";
inline constexpr const char* of = "of";
inline constexpr const char* reason = "reason";
inline constexpr const char* seconds = "seconds";
inline constexpr const char* results = "results";
inline constexpr const char* result = "result";

} // namespace orvista::fleetFields

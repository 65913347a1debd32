#pragma once

#include "check/Finding.h"
#include "model/FileRemarks.h"

#include <string>

/// Whether the files of a project are whole: what their readers met, as findings and in a line for people.
namespace orvista {

Code codeOf(FileRemarkKind kind);

/// A finding for each remark, in their order.
Findings fileFindings(const FileRemarks& remarks);

/// Whether something was lost or moved when the files were read.
bool isNotWhole(const FileRemarks& remarks);

/// Whether a project is not to be sent, listed or saved over unasked. That it holds too much, or numbers that
/// are not those of its blocks, does not make it so.
bool isToRefuse(const FileRemarks& remarks);

/// "12 of 40 regular messages were read": the gravest of the errors, of which there must be one.
std::string gravestText(const FileRemarks& remarks);

/// Whether that remark is one of the errors.
bool isError(const FileRemark& remark);
/// What it says in a few words, as gravestText().
std::string errorText(const FileRemark& remark);

/// "PLANT.orx is not whole: 12 of 40 regular messages were read"
/// \param projectFile its name; where a device file is what the remark is about, that one is named
/// \param remarks of which one is an error
std::string lossText(const std::string& projectFile, const FileRemarks& remarks);
/// The same, with what saving does: "... were read. Saving makes it whole as it is shown."
std::string notWholeText(const std::string& projectFile, const FileRemarks& remarks);

} // namespace orvista

#pragma once

#include "link/TransferSteps.h"

#include <memory>

namespace orvista {

/// The control of one transfer: on Windows the maker's where it is registered, else the one that speaks FTP.
/// Null where libcurl is missing, which the latter needs. `progress` shows the files of a download and must
/// outlive the control's calls.
std::unique_ptr<TransferControl> makeTransferControl(DocTsfModule::TransferProgress& progress);

/// While it is held, controls that are made one after the other begin with what the first one has loaded.
/// Null where there is nothing to hold.
std::shared_ptr<const void> keptTransferLibrary();

} // namespace orvista

#pragma once

namespace orvista {

/// Which project commands can be used; the members are named after the menu entries, toolbar keys and
/// controls. Entries that are always enabled are not listed. The menu's and the toolbar's commands differ on
/// purpose: Upload is enabled in the toolbar before it is in the menu.
struct CommandStates {
    bool miFileSave = true;
    bool miFileSaveAs = true;
    bool miLinkUpload = true;
    bool miOptionSystemCfg = true;
    bool miOptionModbusSetting = true;
    bool miVarLst = true;
    bool miOptionMsgLst = true;
    bool toolbarSave = true;
    bool toolbarUpload = true;
    bool tabDetails = true;
    bool trvSystem = true;

    /// No project: everything listed here is disabled.
    void reset();
    /// The modified mark was set (`modified`) or cleared.
    void markModified(bool modified);
    /// The pages, the navigation tree and the four page entries, as after a download.
    void enableProjectCommands();
    /// After New, Open and Save As: the project commands and the toolbar's Upload.
    void enableOpenedProject();

    bool operator==(const CommandStates&) const = default;
};

} // namespace orvista

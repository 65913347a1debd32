#include "model/CommandStates.h"

namespace orvista {

void CommandStates::reset() {
    *this = {false, false, false, false, false, false, false, false, false, false, false};
}

void CommandStates::markModified(bool modified) {
    miFileSave = modified;
    toolbarSave = modified;
    if (!modified) {
        miLinkUpload = true;
        toolbarUpload = true;
    }
    miFileSaveAs = true;
}

void CommandStates::enableProjectCommands() {
    tabDetails = true;
    trvSystem = true;
    miOptionSystemCfg = true;
    miOptionModbusSetting = true;
    miVarLst = true;
    miOptionMsgLst = true;
}

void CommandStates::enableOpenedProject() {
    enableProjectCommands();
    toolbarUpload = true;
}

} // namespace orvista

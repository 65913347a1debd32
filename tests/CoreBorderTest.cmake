# Plants includes in a tree of one file and holds what CoreBorder.cmake says of them against what it ought to say.
#   cmake -DFOLDER=<scratch> -P CoreBorderTest.cmake
cmake_minimum_required(VERSION 3.25)

# judge(RESULT SAID FILE LINE): runs the check on a tree that holds this one line in this one file.
function(judge result said file line)
  file(REMOVE_RECURSE ${FOLDER})
  file(WRITE ${FOLDER}/${file} "#pragma once\n${line}\n")
  execute_process(COMMAND ${CMAKE_COMMAND} -DSOURCE=${FOLDER} -P ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/CoreBorder.cmake
    RESULT_VARIABLE code ERROR_VARIABLE text)
  string(REGEX REPLACE "[ \n]+" " " text "${text}")
  set(${result} ${code} PARENT_SCOPE)
  set(${said} "${text}" PARENT_SCOPE)
endfunction()

function(passes file line)
  judge(result said ${file} "${line}")
  if(NOT result EQUAL 0)
    message(SEND_ERROR "${file} may not include ${line}, but should: ${said}")
  endif()
endfunction()

function(fails file line expected)
  judge(result said ${file} "${line}")
  string(FIND "${said}" "${file}: ${expected}" place)
  if(result EQUAL 0 OR place EQUAL -1)
    message(SEND_ERROR "${file} includes ${line}; expected \"${expected}\", said \"${said}\"")
  endif()
endfunction()

# Up and sideways.
fails(model/Text.cpp [[#include "link/ModbusFrames.h"]] "model may not know link")
fails(model/Text.h [[#include "script/MessagePage.h"]] "model may not know script")
fails(script/MessagePage.h [[#include "display/Programme.h"]] "script may not know display")
fails(display/LedFont.h [[#include "widgets/LedView.h"]] "display may not know widgets")
fails(check/Findings.h [[#include "sheets/Csv.h"]] "check may not know sheets")
fails(items/CopiedItems.h [[#include "sheets/Csv.h"]] "items may not know sheets")
fails(link/ModbusClient.h [[#include "link/ftp/FtpLink.h"]] "link may not know link/ftp")
fails(link/ftp/FtpLink.cpp [[#include "link/dispatch/Com.h"]] "link/ftp may not know link/dispatch")
fails(link/ftp/curl/Handle.h [[#include "link/forms/frmConnection.h"]] "link/ftp may not know link/forms")
fails(widgets/LedView.h [[#include "dialogs/FolderList.h"]] "widgets may not know dialogs")
fails(dialogs/frmLic.cpp [[#include "script/forms/frmMessageEdit.h"]] "dialogs may not know script/forms")
fails(script/forms/FixedList.h [[#include "dialogs/DriveList.h"]] "script/forms may not know dialogs")
fails(display/forms/DisplayPreview.h [[#include "mainwindow/frmMain.h"]] "display/forms may not know mainwindow")
fails(mainwindow/frmMain.cpp [[#include "simulator/Faults.h"]] "mainwindow may not know simulator")
fails(simulator/Faults.h [[#include "mainwindow/frmMain.h"]] "simulator may not know mainwindow")
fails(simulator/Faults.h [[#include "simulator/forms/LogView.h"]] "simulator may not know simulator/forms")
fails(console/main.cpp [[#include "widgets/LedView.h"]] "console may not know widgets")
fails(mainwindow/frmMain.cpp [[#include "tests/support/ModalDriver.h"]] "mainwindow may not know tests/support")
fails(tools/tour/Stage.h [[#include "tests/link/Server.h"]] "tools may not know tests/link")
fails(tests/link/ServerTest.cpp [[#include "tests/model/Files.h"]] "tests/link may not know tests/model")
fails(tests/support/Files.h [[#include "tests/model/Files.h"]] "tests/support may not know tests/model")

# However it is written.
fails(model/Text.cpp [[#include <link/ModbusFrames.h>]] "model may not know link")
fails(model/Text.cpp "  #\tinclude\"link/ModbusFrames.h\" // for the frames" "model may not know link")
fails(model/Text.cpp [[#include "../link/ModbusFrames.h"]] "includes by a relative path")
fails(model/Text.cpp [[#include "model/../link/ModbusFrames.h"]] "includes by a relative path")
fails(model/Text.cpp "#include FRAMES" "an include that cannot be read")
fails(model/Text.cpp [[#include "garage/Car.h"]] "includes from a folder without a row")
fails(garage/Car.h "#include <string>" "lies in a folder without a row")

# Qt in the core.
fails(model/Text.h "#include <QString>" "brings Qt into the core")
fails(check/Findings.h "#include <QtCore/qstring.h>" "brings Qt into the core")
fails(link/ftp/FtpLink.h [[#include "qglobal.h"]] "brings Qt into the core")

# Downwards, and at home.
passes(model/Text.h [[#include "model/Files.h"]])
passes(model/Text.h "#include <queue>")
passes(check/Findings.h [[#include "display/Programme.h"]])
passes(link/TransferControls.cpp [[#include "link/ftp/FtpTransferControl.h"]])
passes(dialogs/frmLic.cpp "#include <QString>")
passes(link/forms/frmConnection.h [[#include "widgets/MessageBox.h"]])
passes(mainwindow/frmMain.cpp [[#include "script/forms/frmMessageEdit.h"]])
passes(simulator/main.cpp [[#include "simulator/forms/SimulatorWindow.h"]])
passes(tests/link/dispatch/ControlTest.cpp [[#include "tests/link/Server.h"]])
passes(tests/mainwindow/StartTest.cpp [[#include "StartTest.moc"]])

file(REMOVE_RECURSE ${FOLDER})
execute_process(COMMAND ${CMAKE_COMMAND} -DSOURCE=${FOLDER} -P ${CMAKE_CURRENT_LIST_DIR}/CoreBorder.cmake
  RESULT_VARIABLE result ERROR_QUIET)
if(result EQUAL 0)
  message(SEND_ERROR "a tree without sources passes")
endif()

# An arrow that nobody uses.
file(WRITE ${FOLDER}/script/Words.h "#include \"model/Text.h\"\n")
execute_process(COMMAND ${CMAKE_COMMAND} -DSOURCE=${FOLDER} -DWHOLE=ON -P ${CMAKE_CURRENT_LIST_DIR}/CoreBorder.cmake
  ERROR_VARIABLE said)
string(REGEX REPLACE "[ \n]+" " " said "${said}")
if(NOT said MATCHES "display: no include uses its arrow to script")
  message(SEND_ERROR "an arrow that nobody uses passes: ${said}")
endif()
if(said MATCHES "script: no include uses its arrow to model")
  message(SEND_ERROR "an arrow that is used counts as unused: ${said}")
endif()
file(REMOVE_RECURSE ${FOLDER})

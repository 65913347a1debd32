# Arrows between the folders point one way. The table says which folders each folder may know; every include of our own
# is held against it, and the core includes no Qt.
#   cmake -DSOURCE=<root> [-DWHOLE=ON] -P CoreBorder.cmake
# WHOLE: all sources are there, so an arrow that no include uses is one too many.
cmake_minimum_required(VERSION 3.25)

set(core "model script display link link/ftp link/dispatch check items compare sheets")
set(windows "widgets display/forms check/forms script/forms link/forms items/forms compare/forms sheets/forms dialogs mainwindow")
set(simulated "simulator simulator/forms")

# "folder: what it may know besides itself". A subfolder without a row belongs to the folder above it, "tests/ANY" is any
# folder of tests, and a single file may have a row in addition to its folder's. Every arrow is used, except in the rows of
# those that try everything.
set(table
  "model:"
  "script: model"
  "display: model script"
  "link: model"
  "link/ftp: model link"
  "link/dispatch: link"
  "check: model script display items"
  "items: model script display link"
  "compare: model script items"
  "sheets: model script display link check items"

  "widgets: model display"
  "display/forms: model script display check items widgets"
  "check/forms: model check items widgets display/forms items/forms"
  "script/forms: model script display check items widgets display/forms"
  "link/forms: model display link items sheets widgets display/forms items/forms"
  "items/forms: model display check items widgets display/forms"
  "compare/forms: model display items compare widgets display/forms items/forms"
  "sheets/forms: model compare sheets widgets display/forms items/forms items"
  "dialogs: model widgets"
  "mainwindow: model display link check items compare sheets widgets display/forms check/forms script/forms link/forms items/forms compare/forms sheets/forms dialogs"

  "simulator: model display link link/ftp widgets"
  "simulator/forms: simulator"
  "console: model display link link/ftp check items compare sheets"

  "tools: ${core} ${windows} ${simulated} tests/support"
  "tests/support: ${core} ${windows} ${simulated}"
  "tests/ANY: ${core} ${windows} ${simulated} console tools tests/support"
  "bench: ${core} ${windows} ${simulated} console tests/support"

  # Where the pieces of a room meet.
  "link/TransferControls.cpp: link/ftp link/dispatch"
  "simulator/main.cpp: simulator/forms")
set(tries_everything tools tests/support tests/ANY bench)

foreach(row IN LISTS table)
  string(REGEX MATCH "^([^:]+): *(.*)$" match "${row}")
  string(REPLACE " " ";" "may_know_${CMAKE_MATCH_1}" "${CMAKE_MATCH_2}")
  if(NOT CMAKE_MATCH_1 IN_LIST tries_everything)
    list(APPEND judged ${CMAKE_MATCH_1})
  endif()
endforeach()
string(REPLACE " " ";" core "${core}")

# room_of(VARIABLE PATH): the folder of the table that a path lies in, empty for none.
function(room_of variable path)
  get_filename_component(folder "${path}" DIRECTORY)
  while(NOT folder STREQUAL "")
    if(DEFINED "may_know_${folder}" OR folder MATCHES "^tests/[^/]+$")
      break()
    endif()
    get_filename_component(folder "${folder}" DIRECTORY)
  endwhile()
  set(${variable} "${folder}" PARENT_SCOPE)
endfunction()

# check_include(FILE ROOM LINE): complains of an include that leaves the room in a direction the table does not have.
function(check_include file room line)
  string(REGEX MATCH "^[ \t]*#[ \t]*include[ \t]*[<\"]([^>\"]+)[>\"]" match "${line}")
  set(target "${CMAKE_MATCH_1}")
  if(match STREQUAL "")
    message(SEND_ERROR "${file}: an include that cannot be read: ${line}")
  elseif(target MATCHES "^\\.\\.?/|/\\.\\.?/")
    message(SEND_ERROR "${file}: includes by a relative path: ${target}")
  elseif(room IN_LIST core AND target MATCHES "^(Q[A-Z]|Qt|q[a-z]*global)")
    message(SEND_ERROR "${file}: brings Qt into the core: ${target}")
  else()
    room_of(known "${target}")
    set(allowed ${room} ${may_know_${room}} ${may_know_${file}})
    if(room MATCHES "^tests/" AND NOT DEFINED "may_know_${room}")
      list(APPEND allowed ${may_know_tests/ANY})
    endif()
    if(known STREQUAL "" AND match MATCHES "\"" AND target MATCHES "/")
      message(SEND_ERROR "${file}: includes from a folder without a row in the table: ${target}")
    elseif(NOT known STREQUAL "" AND NOT known IN_LIST allowed)
      message(SEND_ERROR "${file}: ${room} may not know ${known}: ${target}")
    endif()
    set("uses_${room}_${known}" yes PARENT_SCOPE)
    set("uses_${file}_${known}" yes PARENT_SCOPE)
  endif()
endfunction()

file(GLOB folders LIST_DIRECTORIES true RELATIVE ${SOURCE} ${SOURCE}/[a-z]*)
list(REMOVE_ITEM folders build)
set(patterns)
foreach(folder IN LISTS folders)
  foreach(ending h hpp hxx inl c cc cpp cxx mm)
    list(APPEND patterns "${SOURCE}/${folder}/*.${ending}")
  endforeach()
endforeach()
file(GLOB_RECURSE files RELATIVE ${SOURCE} ${patterns})
if(NOT files)
  message(SEND_ERROR "no sources in ${SOURCE}")
endif()

foreach(file IN LISTS files)
  room_of(room "${file}")
  if(room STREQUAL "")
    message(SEND_ERROR "${file}: lies in a folder without a row in the table")
    continue()
  endif()
  file(STRINGS "${SOURCE}/${file}" includes REGEX "^[ \t]*#[ \t]*(include|import)")
  foreach(line IN LISTS includes)
    check_include("${file}" "${room}" "${line}")
  endforeach()
endforeach()

if(NOT WHOLE)
  return()
endif()
foreach(folder IN LISTS judged)
  foreach(known IN LISTS "may_know_${folder}")
    if(NOT DEFINED "uses_${folder}_${known}")
      message(SEND_ERROR "${folder}: no include uses its arrow to ${known}")
    endif()
  endforeach()
endforeach()

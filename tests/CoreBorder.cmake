# The core knows no Qt and nothing that stands above it: a rule about paths, checked on every include.
set(core_folders model script link display)
foreach(folder IN LISTS core_folders)
  file(GLOB_RECURSE files RELATIVE ${SOURCE} ${SOURCE}/${folder}/*.h ${SOURCE}/${folder}/*.cpp)
  list(FILTER files EXCLUDE REGEX "^(script|link)/forms/")
  foreach(file IN LISTS files)
    file(STRINGS ${SOURCE}/${file} includes REGEX "^[ \t]*#[ \t]*include")
    foreach(include IN LISTS includes)
      if(include MATCHES "[<\"](Q[A-Z]|Qt|q[a-z]*global)" OR
         include MATCHES "[<\"](dialogs|mainwindow|simulator|tests|script/forms|link/forms)/" OR
         include MATCHES "[<\"]\\.\\.?/")
        message(SEND_ERROR "${file} reaches above the core: ${include}")
      endif()
    endforeach()
  endforeach()
endforeach()

# Arrows between the folders point downwards only: a rule about paths, checked on every include.

# forbid(REASON EXPRESSION FILE...): no include of these files may match the expression.
function(forbid reason expression)
  foreach(file IN LISTS ARGN)
    file(STRINGS ${SOURCE}/${file} includes REGEX "^[ \t]*#[ \t]*include")
    foreach(include IN LISTS includes)
      if(include MATCHES "[<\"](${expression})")
        message(SEND_ERROR "${file} ${reason}: ${include}")
      endif()
    endforeach()
  endforeach()
endfunction()

# sources(VARIABLE FOLDER...): the sources below these folders.
function(sources variable)
  list(TRANSFORM ARGN REPLACE "(.+)" "${SOURCE}/\\1/*.h;${SOURCE}/\\1/*.cpp" OUTPUT_VARIABLE patterns)
  file(GLOB_RECURSE files RELATIVE ${SOURCE} ${patterns})
  set(${variable} ${files} PARENT_SCOPE)
endfunction()

sources(core model script link display check)
list(FILTER core EXCLUDE REGEX "^(script|link)/forms/")
forbid("brings Qt into the core" "Q[A-Z]|Qt|q[a-z]*global" ${core})
forbid("reaches above the core" "(widgets|dialogs|mainwindow|simulator|tests|script/forms|link/forms)/" ${core})

# The check stands upon the display.
sources(below model script link display)
list(FILTER below EXCLUDE REGEX "^(script|link)/forms/")
forbid("reaches up to the check" "check/" ${below})

sources(widgets widgets)
forbid("reaches above the widgets" "(dialogs|mainwindow|simulator|tests|script/forms|link/forms)/" ${widgets})

sources(forms dialogs script/forms link/forms)
forbid("reaches above the dialogs" "(mainwindow|simulator|tests)/" ${forms})

sources(mainwindow mainwindow)
forbid("reaches into another program" "(simulator|tests)/" ${mainwindow})

sources(all model script link display check widgets dialogs mainwindow simulator)
forbid("includes by a relative path" "\\.\\.?/" ${all})

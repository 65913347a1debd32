# Window tests under the fonts of other machines. A fontconfig file for each family, which `tests/fonts` uses, too:
# families of which the program's letters are taken, and the font for scripts that comes of it.
set(ORVISTA_FONT_FOLDER ${CMAKE_CURRENT_BINARY_DIR}/fonts)
foreach(fonts IN ITEMS "dejavu" "liberation" "noto;dejavu")
  list(GET fonts 0 name)
  list(TRANSFORM fonts REPLACE "(.+)" "<dir>/usr/share/fonts/truetype/\\1</dir>" OUTPUT_VARIABLE folders)
  list(JOIN folders "" folders)
  file(CONFIGURE OUTPUT ${ORVISTA_FONT_FOLDER}/${name}.conf @ONLY CONTENT [[<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig><include>/etc/fonts/fonts.conf</include><reset-dirs/>@folders@</fontconfig>
]])
endforeach()

# orvista_test_in_fonts(name...): runs window tests once more with Noto Sans Mono, which is higher than the usual font for
# scripts, and once more with large letters. Where the font is not installed ctest tells that the test was skipped.
function(orvista_test_in_fonts)
  foreach(name IN LISTS ARGN)
    get_test_property(${name} ENVIRONMENT environment)
    foreach(fonts IN ITEMS noto large)
      add_test(NAME ${name}.${fonts} COMMAND ${name})
      set_tests_properties(${name}.${fonts} PROPERTIES TIMEOUT 300 SKIP_RETURN_CODE 77 ENVIRONMENT "${environment}")
    endforeach()
    set_property(TEST ${name}.noto APPEND PROPERTY ENVIRONMENT
      FONTCONFIG_FILE=${ORVISTA_FONT_FOLDER}/noto.conf "ORVISTA_EXPECTED_FIXED_FONT=Noto Sans Mono")
    set_property(TEST ${name}.large APPEND PROPERTY ENVIRONMENT ORVISTA_TEST_POINTS=14)
  endforeach()
endfunction()

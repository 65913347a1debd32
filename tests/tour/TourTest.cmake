# The tour as a test: included where tests are declared, so that ./run can build the tour without any.
set_target_properties(orvista-tour PROPERTIES EXCLUDE_FROM_ALL OFF)
add_test(NAME tour COMMAND ${CMAKE_COMMAND}
  -DTOUR=$<TARGET_FILE:orvista-tour>
  -DFOLDER=${CMAKE_CURRENT_BINARY_DIR}/tour
  -DBITMAP=${CMAKE_SOURCE_DIR}/examples/pumpstation/alarm.bmp
  -DGOLDEN=${CMAKE_CURRENT_LIST_DIR}/golden
  -P ${CMAKE_CURRENT_LIST_DIR}/RunTour.cmake)
set_tests_properties(tour PROPERTIES TIMEOUT 200
  ENVIRONMENT "QT_QPA_PLATFORM=offscreen;${ORVISTA_TEST_ENVIRONMENT}")

# The tour as a test: included where tests are declared, so that ./run can build the tour without any. It runs
# once more in a locale with a decimal comma and a letter I of its own, with the same files to come out.
set_target_properties(orvista-tour PROPERTIES EXCLUDE_FROM_ALL OFF)
set(tour_folder ${CMAKE_CURRENT_LIST_DIR})

function(orvista_tour_test name)
  add_test(NAME ${name} COMMAND ${CMAKE_COMMAND}
    -DTOUR=$<TARGET_FILE:orvista-tour>
    -DFOLDER=${CMAKE_CURRENT_BINARY_DIR}/${name}
    -DBITMAP=${CMAKE_SOURCE_DIR}/examples/pumpstation/alarm.bmp
    -DGOLDEN=${tour_folder}/golden
    -P ${tour_folder}/RunTour.cmake)
  set_tests_properties(${name} PROPERTIES TIMEOUT 200
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;${ORVISTA_TEST_ENVIRONMENT}")
endfunction()

orvista_tour_test(tour)
orvista_tour_test(tour.tr_TR.UTF-8)
orvista_run_in_locale(tour.tr_TR.UTF-8 tr_TR.UTF-8)

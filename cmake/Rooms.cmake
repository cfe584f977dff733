# A room is a folder below src/. What decides goes into tessaro_core (QtCore and QtGui only), what holds
# controls into tessaro_ui.  tessaro_room(CORE a.cpp b.cpp UI frmX.cpp frmX.h frmX.ui)
function(tessaro_room)
  cmake_parse_arguments(ROOM "" "" "CORE;UI" ${ARGN})
  list(TRANSFORM ROOM_CORE PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
  list(TRANSFORM ROOM_UI PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
  if(ROOM_CORE)
    target_sources(tessaro_core PRIVATE ${ROOM_CORE})
  endif()
  if(ROOM_UI)
    target_sources(tessaro_ui PRIVATE ${ROOM_UI})
  endif()
endfunction()

# One test program a room: tessaro_test(jet LIBS jet SOURCES LexerTest.cpp)  gives test_jet.
# Windows are drawn off screen, or with ON_X11 on a virtual display of their own, one test after the other.
function(tessaro_test name)
  cmake_parse_arguments(T "ON_X11" "" "LIBS;SOURCES" ${ARGN})
  if(NOT T_SOURCES)
    return()
  endif()
  add_executable(test_${name} ${T_SOURCES})
  set_target_properties(test_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests AUTOMOC ON)
  target_link_libraries(test_${name} PRIVATE ${T_LIBS} GTest::gmock tessaro_warnings)
  target_include_directories(test_${name} PRIVATE
    ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests ${PROJECT_BINARY_DIR}/places)
  if(T_ON_X11)
    add_test(NAME ${name} COMMAND xvfb-run -a -s "-screen 0 1280x800x24 -dpi 96" $<TARGET_FILE:test_${name}>)
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=xcb" TIMEOUT 300 LABELS display)
    return()
  endif()
  gtest_discover_tests(test_${name} TEST_PREFIX ${name}. DISCOVERY_TIMEOUT 60
    PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen" TIMEOUT 300)
endfunction()

# The application folder that the build makes from content/; the program, the tour and the tests read it.
set(TESSARO_INSTALLATION ${PROJECT_BINARY_DIR}/installation CACHE INTERNAL "")

# What keeps the build short: headers that are compiled once for many sources, sources that are compiled together, and a
# quick linker. They are switched on by presets. Without the first two the sources compile as they are, and CI builds so
# once, as nothing else shows a missing #include.

# A hundred programs and libraries are linked in a quarter of the time by gold, which comes with GNU ld, and in less by mold. A
# program isn't linked again because a shared library that it uses has been.
if(CORVANE_QUICK_LINK)
  set(CMAKE_LINK_DEPENDS_NO_SHARED ON)
  if(NOT "${CMAKE_EXE_LINKER_FLAGS}" MATCHES "-fuse-ld=")
    include(CheckLinkerFlag)
    check_linker_flag(CXX -fuse-ld=mold CORVANE_HAS_MOLD)
    check_linker_flag(CXX -fuse-ld=gold CORVANE_HAS_GOLD)
    if(CORVANE_HAS_MOLD)
      add_link_options(-fuse-ld=mold)
    elseif(CORVANE_HAS_GOLD)
      add_link_options(-fuse-ld=gold)
    endif()
  endif()
endif()

# One target for each set of headers; the others reuse what it compiled. It is compiled as they are, or it couldn't be.
function(corvane_headers name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES;HEADERS;OPTIONS")
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/headers/${name}.cpp CONTENT "// Holds the precompiled headers \"${name}\".\n")
  add_library(${name} OBJECT ${CMAKE_BINARY_DIR}/headers/${name}.cpp)
  set_target_properties(${name} PROPERTIES UNITY_BUILD OFF)
  target_link_libraries(${name} PRIVATE corvane_options ${arg_LIBRARIES})
  target_compile_options(${name} PRIVATE ${arg_OPTIONS})
  target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
endfunction()

# corvane_precompiled(TARGET SET) lets a target use that set of headers: corvane_headers_core or _qt, or the value of
# CORVANE_TEST_HEADERS or CORVANE_WIDGET_TEST_HEADERS. It has to be optimised as they are: by CORVANE_HOST_OPTIONS.
function(corvane_precompiled target set)
  if(CORVANE_PRECOMPILE)
    target_precompile_headers(${target} REUSE_FROM ${set})
  endif()
endfunction()

# corvane_meta_objects(TARGET) lets moc read the target's headers that have a source of the same name; where there is Q_OBJECT
# in the header, the source ends with #include "moc_<name>.cpp". moc gets no folders of headers, as CMake's own AUTOMOC would
# give it: it needs none of what they declare, and reading Qt's for each header takes twenty times as long.
function(corvane_meta_objects target)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target}_moc)
  get_target_property(sources ${target} SOURCES)
  foreach(header IN LISTS sources)
    string(REGEX REPLACE "\\.h$" ".cpp" source ${header})
    if(header MATCHES "\\.h$" AND source IN_LIST sources)
      cmake_path(GET header STEM name)
      cmake_path(RELATIVE_PATH header BASE_DIRECTORY ${CMAKE_SOURCE_DIR} OUTPUT_VARIABLE included)
      add_custom_command(OUTPUT ${folder}/moc_${name}.cpp DEPENDS ${header} VERBATIM
        COMMAND Qt6::moc --no-notes -f ${included} ${header} -o ${folder}/moc_${name}.cpp)
      list(APPEND outputs ${folder}/moc_${name}.cpp)
    endif()
  endforeach()
  file(MAKE_DIRECTORY ${folder})
  add_custom_target(${target}_moc DEPENDS ${outputs})
  add_dependencies(${target} ${target}_moc)
  target_include_directories(${target} PRIVATE ${folder})
endfunction()

set(CORVANE_CORE_HEADERS <algorithm> <array> <cstdint> <cstdlib> <filesystem> <fstream> <functional> <iostream> <map>
  <memory> <optional> <set> <sstream> <string> <string_view> <unordered_map> <utility> <variant> <vector>
  ${CMAKE_SOURCE_DIR}/corvane/base/Automation.h ${CMAKE_SOURCE_DIR}/corvane/base/Event.h
  ${CMAKE_SOURCE_DIR}/corvane/base/Failure.h ${CMAKE_SOURCE_DIR}/corvane/base/Text.h)
set(CORVANE_SHELL_HEADERS ${CMAKE_SOURCE_DIR}/corvane/core/CorvaneMain.h ${CMAKE_SOURCE_DIR}/corvane/core/Framework.h
  ${CMAKE_SOURCE_DIR}/corvane/core/Singleton.h ${CMAKE_SOURCE_DIR}/corvane/explorer/ExplorerManager.h
  ${CMAKE_SOURCE_DIR}/corvane/explorer/NavigationManager.h ${CMAKE_SOURCE_DIR}/corvane/platform/controls/ActiveBar.h
  ${CMAKE_SOURCE_DIR}/corvane/platform/controls/MdiForm.h ${CMAKE_SOURCE_DIR}/corvane/services/ServiceManager.h
  ${CMAKE_SOURCE_DIR}/corvane/windows/Window.h ${CMAKE_SOURCE_DIR}/corvane/windows/WindowManager.h)
set(CORVANE_QT_HEADERS <QApplication> <QDialog> <QFile> <QFileInfo> <QFormLayout> <QHeaderView> <QKeyEvent> <QLabel>
  <QLineEdit> <QMainWindow> <QMdiArea> <QMdiSubWindow> <QMenu> <QMenuBar> <QMessageBox> <QPainter> <QPointer>
  <QPushButton> <QScreen> <QScrollBar> <QString> <QStringList> <QStyle> <QTimer> <QToolBar> <QToolButton> <QTreeWidget>
  <QVBoxLayout> <QWidget>)

set(CORVANE_TEST_HEADERS corvane_headers_test)
set(CORVANE_WIDGET_TEST_HEADERS corvane_headers_qt)
set(CORVANE_LAZY_HEADERS OFF)
set(lazy_headers)
set(lazy_libraries)
if(CORVANE_PRECOMPILE)
  if(CORVANE_TESTS)
    find_package(GTest REQUIRED)
  endif()
  # g++ reads all of a precompiled header for each unit, clang what the unit names: with clang tests and libraries share a
  # set, and small targets use it, too.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    set(CORVANE_LAZY_HEADERS ON)
    list(APPEND CORVANE_CORE_HEADERS ${CORVANE_SHELL_HEADERS} <chrono> <thread>
      ${CMAKE_SOURCE_DIR}/corvane/author/Client.h ${CMAKE_SOURCE_DIR}/corvane/author/Jobs.h)
    list(APPEND CORVANE_QT_HEADERS <QDir> <QJsonArray> <QJsonDocument> <QJsonObject> <QPlainTextEdit> <QSettings> <QTableView>)
    if(CORVANE_TESTS)
      set(CORVANE_TEST_HEADERS corvane_headers_core)
      list(APPEND CORVANE_CORE_HEADERS <gtest/gtest.h>)
      set(lazy_libraries GTest::gtest)
    endif()
    set(lazy_headers <nlohmann/json.hpp>)
  endif()
  corvane_headers(corvane_headers_core LIBRARIES ${lazy_libraries} OPTIONS ${CORVANE_HOST_OPTIONS}
    HEADERS ${CORVANE_CORE_HEADERS} ${lazy_headers})
  if(CORVANE_DESKTOP)
    corvane_headers(corvane_headers_qt LIBRARIES corvane_qt_options ${lazy_libraries} OPTIONS ${CORVANE_HOST_OPTIONS}
      HEADERS ${CORVANE_CORE_HEADERS} ${CORVANE_SHELL_HEADERS} ${CORVANE_QT_HEADERS})
  endif()
  if(CORVANE_TESTS AND NOT CORVANE_LAZY_HEADERS)
    corvane_headers(corvane_headers_test LIBRARIES GTest::gtest OPTIONS ${CORVANE_HOST_OPTIONS}
      HEADERS <gtest/gtest.h> ${CORVANE_CORE_HEADERS} ${CORVANE_SHELL_HEADERS})
  endif()
  # Where each test is compiled on its own, as many units as there are tests would read these again.
  if(CORVANE_DESKTOP AND CORVANE_TESTS AND NOT CMAKE_UNITY_BUILD)
    set(CORVANE_WIDGET_TEST_HEADERS corvane_headers_qt_test)
    corvane_headers(corvane_headers_qt_test LIBRARIES corvane_qt_options GTest::gtest OPTIONS ${CORVANE_HOST_OPTIONS}
      HEADERS ${CORVANE_CORE_HEADERS} ${CORVANE_SHELL_HEADERS} ${CORVANE_QT_HEADERS} <gtest/gtest.h>
              ${CMAKE_SOURCE_DIR}/desktop/application/Application.h)
  endif()
endif()

# corvane_precompiled_lazily(SET TARGET...): by clang alone. What g++ would gain by it is less than what it costs.
function(corvane_precompiled_lazily set)
  foreach(target IN LISTS ARGN)
    if(CORVANE_LAZY_HEADERS AND TARGET ${target})
      corvane_precompiled(${target} ${set})
    endif()
  endforeach()
endfunction()

# Once all targets are there. What is seen from outside of a library is a property of the precompiled header as well.
function(corvane_precompile_the_rest)
  if(CORVANE_LAZY_HEADERS)
    corvane_headers(corvane_headers_exported LIBRARIES ${lazy_libraries} OPTIONS ${CORVANE_HOST_OPTIONS}
      HEADERS ${CORVANE_CORE_HEADERS} ${lazy_headers})
    set_target_properties(corvane_headers_exported PROPERTIES CXX_VISIBILITY_PRESET default)
  endif()
  corvane_precompiled_lazily(corvane_headers_exported corvane_headless corvane_testing_static corvane_database studies_widgets)
  if("${CORVANE_CORE_OPTIONS}" STREQUAL "${CORVANE_HOST_OPTIONS}")
    corvane_precompiled_lazily(corvane_headers_exported studies_core)
  endif()
  corvane_precompiled_lazily(corvane_headers_core corvane-tool corvane_new desktop_plugin_trouble preview_plugin_draft
    author_ShopSvc analysis_example_plugin forms_BirdsSvc RecentSvc PrimesSvc GreetingSvc)
endfunction()

# One target per layer of the architecture. A layer is a folder below src/; its files are found by globbing, and
# every layer is an object library that ends up in one of the two shared libraries.

add_library(lumoplot_flags INTERFACE)
# -Wno-restrict: GCC 12 reports sums of strings falsely.
target_compile_options(lumoplot_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  -ffp-contract=off -Wno-restrict $<$<BOOL:${LUMOPLOT_WERROR}>:-Werror>)
if(LUMOPLOT_SANITIZE)
  target_compile_options(lumoplot_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer -O1
    -Wno-maybe-uninitialized) # false reports about instrumented code
  target_link_options(lumoplot_flags INTERFACE -fsanitize=address,undefined)
endif()

# lumoplot_layer(NAME FOLDER [LIBRARY xygraph|xydataeditor] [QT] [DEPS targets…])
# QT: the layer uses the toolkit (moc, uic, rcc and the precompiled header of the toolkit).
function(lumoplot_layer name folder)
  cmake_parse_arguments(ARG "QT" "LIBRARY" "DEPS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS
    ${folder}/*.cpp ${folder}/*.h ${folder}/*.ui ${folder}/*.qrc)
  if(NOT sources)
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE ${ARG_DEPS})
    return()
  endif()
  add_library(${name} OBJECT ${sources})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${ARG_DEPS} PRIVATE lumoplot_flags)
  if(ARG_LIBRARY STREQUAL "xygraph")
    target_compile_definitions(${name} PRIVATE XYGRAPH_BUILDING)
    target_sources(xygraph PRIVATE $<TARGET_OBJECTS:${name}>)
  elseif(ARG_LIBRARY STREQUAL "xydataeditor")
    target_compile_definitions(${name} PRIVATE XYDATAEDITOR_BUILDING)
    target_sources(xydataeditor PRIVATE $<TARGET_OBJECTS:${name}>)
  endif()
  if(ARG_QT)
    target_compile_definitions(${name} PRIVATE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII)
    target_precompile_headers(${name} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/qt_pch.h)
  else()
    set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
  endif()
endfunction()

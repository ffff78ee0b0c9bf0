# One target per layer of src/layers.txt. A layer is a folder below src/; its files are found by globbing, and every layer
# is an object library that ends up in one of the shared libraries. The target of a/b is called a_b.
#
# What is compiled once is linked twice: into the shared library L, and by way of L_objects into the programs that look
# behind what L exports (tests, benchmarks, fuzz targets).

add_library(lumoplot_flags INTERFACE)
# What is switched off: GCC 12 reports sums of strings falsely.
target_compile_options(lumoplot_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  -ffp-contract=off
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict;-Wno-stringop-overflow;-Wno-array-bounds>
  $<$<BOOL:${LUMOPLOT_WERROR}>:-Werror>)
if(LUMOPLOT_SANITIZE)
  target_compile_options(lumoplot_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer -O1
    -Wno-maybe-uninitialized # false reports about instrumented code
    -fno-sanitize=vptr # the libraries do not export the type information of what hosts do not use
    -fno-ipa-icf) # equal functions of two classes folded into one are reported as calls on wrong objects
  target_link_options(lumoplot_flags INTERFACE -fsanitize=address,undefined)
endif()

# What Qt has declared deprecated is hidden on Windows, whose build so tells what later versions of Qt no longer have.
# QT_DISABLE_DEPRECATED_BEFORE is its name up to Qt 6.4.
set(lumoplot_current_qt $<$<PLATFORM_ID:Windows>:QT_DISABLE_DEPRECATED_UP_TO=0x060800>
  $<$<PLATFORM_ID:Windows>:QT_DISABLE_DEPRECATED_BEFORE=0x060800>)

# lumoplot_precompile(TARGET NAME LIBRARIES…): the target is compiled with cmake/NAME_pch.h, which is precompiled once for
# all that use it; LIBRARIES are what that header needs. Definitions that Qt's headers look at must be alike.
function(lumoplot_precompile target name)
  target_compile_definitions(${target} PRIVATE ${lumoplot_current_qt})
  if(TARGET lumoplot_pch_${name})
    target_precompile_headers(${target} REUSE_FROM lumoplot_pch_${name})
    return()
  endif()
  file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/pch/${name}_pch.cpp CONTENT "")
  add_library(lumoplot_pch_${name} OBJECT ${PROJECT_BINARY_DIR}/pch/${name}_pch.cpp)
  set_target_properties(lumoplot_pch_${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF UNITY_BUILD OFF)
  target_link_libraries(lumoplot_pch_${name} PRIVATE lumoplot_flags ${ARGN})
  target_compile_definitions(lumoplot_pch_${name} PRIVATE QT_NO_KEYWORDS ${lumoplot_current_qt} $<$<STREQUAL:${name},qt>:QT_NO_CAST_FROM_ASCII>)
  target_compile_options(lumoplot_pch_${name} PRIVATE $<$<AND:$<CONFIG:Release>,$<STREQUAL:${name},test>>:-O1>)
  target_precompile_headers(lumoplot_pch_${name} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/${name}_pch.h)
  target_precompile_headers(${target} REUSE_FROM lumoplot_pch_${name})
endfunction()

# lumoplot_library(NAME USES…): a shared library, to which lumoplot_layer adds, and NAME_objects.
function(lumoplot_library name)
  add_library(${name} SHARED)
  add_library(lumoplot::${name} ALIAS ${name})
  target_include_directories(${name} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_link_libraries(${name} PUBLIC ${ARGN} PRIVATE $<BUILD_INTERFACE:lumoplot_flags>)
  target_compile_features(${name} PUBLIC cxx_std_20)
  set_target_properties(${name} PROPERTIES
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
    INSTALL_RPATH "${LUMOPLOT_BESIDE}" AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
  if(WIN32)
    set_target_properties(${name} PROPERTIES PREFIX "") # xygraph.dll
  elseif(NOT APPLE)
    target_link_options(${name} PRIVATE -Wl,--no-undefined)
  endif()
  add_library(${name}_objects INTERFACE)
  list(TRANSFORM ARGN REPLACE "^(xy.*)$" "\\1_objects" OUTPUT_VARIABLE uses)
  target_include_directories(${name}_objects INTERFACE ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name}_objects INTERFACE ${uses})
  if(WIN32)
    target_compile_definitions(${name}_objects INTERFACE LUMOPLOT_STATIC)
    lumoplot_local_imports(${name})
  endif()
endfunction()

# Layers of one library import what they use of another one, also where both are linked as object files.
function(lumoplot_local_imports library)
  set(script ${PROJECT_SOURCE_DIR}/cmake/windows/local_imports.cmake)
  set(source ${PROJECT_BINARY_DIR}/imports/${library}.cpp)
  add_custom_command(OUTPUT ${source} DEPENDS ${library} ${script}
    COMMAND ${CMAKE_COMMAND} -D OBJDUMP=${CMAKE_OBJDUMP} -D DLL=$<TARGET_FILE:${library}> -D OUTPUT=${source} -P ${script})
  add_library(${library}_imports OBJECT ${source})
  set_target_properties(${library}_imports PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
  target_sources(${library}_objects INTERFACE $<TARGET_OBJECTS:${library}_imports>)
endfunction()

function(lumoplot_layer folder library toolkit)
  string(REPLACE "/" "_" name ${folder})
  list(TRANSFORM ARGN REPLACE "/" "_" OUTPUT_VARIABLE uses)
  file(GLOB sources CONFIGURE_DEPENDS
    ${folder}/*.cpp ${folder}/*.h ${folder}/*.ui ${folder}/*.qrc)
  add_library(${name} OBJECT ${sources})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${uses} PRIVATE lumoplot_flags)
  string(TOUPPER ${library} LIBRARY)
  target_compile_definitions(${name} PRIVATE ${LIBRARY}_BUILDING)
  set(below ${name} ${uses})
  foreach(used ${uses})
    get_property(deeper GLOBAL PROPERTY lumoplot_below_${used})
    list(APPEND below ${deeper})
  endforeach()
  list(REMOVE_DUPLICATES below)
  set_property(GLOBAL PROPERTY lumoplot_below_${name} "${below}")
  target_sources(${library} PRIVATE $<TARGET_OBJECTS:${name}>)
  target_sources(${library}_objects INTERFACE $<TARGET_OBJECTS:${name}>)
  if(toolkit STREQUAL "widgets")
    target_link_libraries(${name} PUBLIC Qt6::Widgets $<TARGET_NAME_IF_EXISTS:Qt6::Svg> Qt6::PrintSupport)
    target_compile_definitions(${name} PRIVATE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII)
    lumoplot_precompile(${name} qt Qt6::Widgets $<TARGET_NAME_IF_EXISTS:Qt6::Svg> Qt6::PrintSupport)
  else()
    if(toolkit STREQUAL "core")
      target_link_libraries(${name} PUBLIC Qt6::Core)
    elseif(toolkit STREQUAL "sql")
      target_link_libraries(${name} PUBLIC Qt6::Core PRIVATE Qt6::Sql)
    endif()
    set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
  endif()
endfunction()

# lumoplot_link_layers(TARGET LAYER LIBRARIES…): links the layer, those below it and what they use; no other is compiled.
function(lumoplot_link_layers target layer)
  get_property(below GLOBAL PROPERTY lumoplot_below_${layer})
  foreach(name ${below})
    target_sources(${target} PRIVATE $<TARGET_OBJECTS:${name}>)
  endforeach()
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${target} PRIVATE ${ARGN})
endfunction()

# Makes the layers of the table, in its order.
function(lumoplot_layers_of table)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${table})
  file(STRINGS ${table} rows REGEX "^[^#]")
  foreach(row ${rows})
    string(REGEX REPLACE " *\\| *" ";" row "${row}")
    list(GET row 0 folder)
    list(GET row 1 library)
    list(GET row 2 toolkit)
    list(LENGTH row columns)
    set(uses "")
    if(columns GREATER 3)
      list(GET row 3 uses)
      separate_arguments(uses)
    endif()
    if(NOT library STREQUAL "-")
      lumoplot_layer(${folder} ${library} ${toolkit} ${uses})
    endif()
  endforeach()
endfunction()

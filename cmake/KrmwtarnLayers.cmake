# KrmwtarnLayers.cmake — how a layer becomes a target. Each layer of the library
# (platform, model, views, source, store, check) and of the tool (sample, json,
# diagram, in tools/) is one shared library that sees only its own headers and
# those of the layers it links; its headers are reached as
# <krmwtarn/LAYER/...> in the build tree (and, for the library's layers, after
# installation).
# Warnings are set here once; KRMWTARN_WERROR turns them into errors (CI).

option(KRMWTARN_WERROR "Treat compiler warnings as errors" OFF)

# Warning flags for every target of the project.
function(krmwtarn_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra $<$<BOOL:${KRMWTARN_WERROR}>:-Werror>)
  # GCC 12 optimising "text" + std::string warns of an overlapping memcpy
  # inside the standard library that cannot happen (a known false positive of
  # that release); the check stays on for every other compiler.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 12
     AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
endfunction()

# krmwtarn_layer(NAME SOURCES src... [TOOL] [DEPENDS layer...] [LIBS lib...] [PUBLIC_LIBS lib...]
#                [EXCLUDE glob...])
# makes krmwtarn_NAME (alias krmwtarn::NAME) from the folder NAME/, or with TOOL
# from tools/NAME/: a layer of the tool, installed as a library the installed
# tool runs with, but neither its headers nor its target are part of the
# package a client finds.
function(krmwtarn_layer name)
  cmake_parse_arguments(L "TOOL" "" "SOURCES;DEPENDS;LIBS;PUBLIC_LIBS;EXCLUDE" ${ARGN})
  set(folder ${name})
  if(L_TOOL)
    set(folder tools/${name})
  endif()
  set(target krmwtarn_${name})
  add_library(${target} SHARED ${L_SOURCES})
  add_library(krmwtarn::${name} ALIAS ${target})
  # The layer's include root holds only krmwtarn/NAME, a link to its folder.
  set(root ${PROJECT_BINARY_DIR}/layers/${name})
  file(MAKE_DIRECTORY ${root}/krmwtarn)
  if(NOT EXISTS ${root}/krmwtarn/${name})
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${folder} ${root}/krmwtarn/${name} SYMBOLIC)
  endif()
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${root}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  foreach(dep IN LISTS L_DEPENDS)
    target_link_libraries(${target} PUBLIC krmwtarn_${dep})
  endforeach()
  target_link_libraries(${target} PUBLIC ${L_PUBLIC_LIBS} PRIVATE ${L_LIBS})
  set_target_properties(${target} PROPERTIES
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
    EXPORT_NAME ${name} CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  # A reference to a higher layer has no definition here: refuse to link it.
  if(NOT CMAKE_CXX_FLAGS MATCHES "sanitize")
    target_link_options(${target} PRIVATE -Wl,--no-undefined)
  endif()
  krmwtarn_warnings(${target})
  if(L_TOOL)
    install(TARGETS ${target} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} NAMELINK_SKIP)
    return()
  endif()
  install(TARGETS ${target} EXPORT krmwtarnTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  set(excludes)
  foreach(e IN LISTS L_EXCLUDE)
    list(APPEND excludes PATTERN ${e} EXCLUDE)
  endforeach()
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/${name}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/krmwtarn/${name}
    FILES_MATCHING PATTERN "*.h" PATTERN "*.def" PATTERN "*.inc" ${excludes})
endfunction()

# SPDX-License-Identifier: MIT
# The few rules that every target of the tree obeys.

# veldron_allow(<target> [<lower target>...]): the only edges that may ever be drawn from it.
macro(veldron_allow target)
    set(VELDRON_EDGES_${target} ${ARGN})
    list(APPEND VELDRON_TARGETS ${target})
endmacro()

function(veldron_check_edges target)
    if(NOT target IN_LIST VELDRON_TARGETS)
        message(FATAL_ERROR "${target} has no row in the table of allowed edges")
    endif()
    foreach(lower IN LISTS ARGN)
        if(NOT lower IN_LIST VELDRON_EDGES_${target})
            message(FATAL_ERROR "${target} may not use ${lower}")
        endif()
    endforeach()
endfunction()

# veldron_unity(<target> <setting>...): compiles its sources several at a time where VELDRON_UNITY is
# one of these. The headers and templates, which take the compiler most of its time, then come once for
# them all. What two unnamed namespaces of a target call the same is refused there.
function(veldron_unity target)
    if(VELDRON_UNITY IN_LIST ARGN)
        set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 6)
    endif()
endfunction()

function(veldron_compile_rules target)
    veldron_unity(${target} all)
    target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR})
    target_compile_definitions(${target} PRIVATE QT_NO_KEYWORDS QT_NO_CAST_FROM_BYTEARRAY
        QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_DISABLE_DEPRECATED_BEFORE=0x060400)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
        -Wsign-conversion -Wnon-virtual-dtor -Wold-style-cast -Wcast-qual -Woverloaded-virtual
        -Wformat=2 -Werror)
    if(VELDRON_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=address,undefined
            -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=address,undefined)
    endif()
    if(VELDRON_COVERAGE)
        target_compile_options(${target} PRIVATE --coverage)
        target_link_options(${target} PRIVATE --coverage)
    endif()
endfunction()

# veldron_library(<target> [OPTIMISED] SOURCES ... USES <lower targets> QT <modules>)
# OPTIMISED: in debug builds too, except for coverage.
function(veldron_library target)
    cmake_parse_arguments(ARG "OPTIMISED" "" "SOURCES;USES;QT" ${ARGN})
    veldron_check_edges(${target} ${ARG_USES})
    add_library(veldron_${target} STATIC ${ARG_SOURCES})
    add_library(veldron::${target} ALIAS veldron_${target})
    veldron_compile_rules(veldron_${target})
    if("Widgets" IN_LIST ARG_QT)
        set_target_properties(veldron_${target} PROPERTIES AUTOMOC ON)
    endif()
    foreach(lower IN LISTS ARG_USES)
        target_link_libraries(veldron_${target} PUBLIC veldron::${lower})
    endforeach()
    foreach(module IN LISTS ARG_QT)
        target_link_libraries(veldron_${target} PUBLIC Qt6::${module})
    endforeach()
    if(ARG_OPTIMISED AND CMAKE_BUILD_TYPE STREQUAL "Debug" AND NOT VELDRON_COVERAGE)
        target_compile_options(veldron_${target} PRIVATE -O2)
        # The compiler crashes on a precompiled header of another optimisation level.
        target_precompile_headers(veldron_${target} PRIVATE ${VELDRON_PCH_core})
    elseif("Widgets" IN_LIST ARG_QT)
        veldron_precompile(veldron_${target} widgets)
    elseif(ARG_QT STREQUAL "Core")
        veldron_precompile(veldron_${target} core)
    endif()
endfunction()

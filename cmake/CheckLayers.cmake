# Fails when a file includes from a layer above its own. The libraries'
# link lines already refuse an upward call; a header-only include would slip
# past them, so the include lines are read here as well.
#
#   cmake -DKW_SOURCE_DIR=<src> -P CheckLayers.cmake

cmake_minimum_required(VERSION 3.25)

# What each folder under src/ may include from, itself included. presentation/
# sits on top and may include anything.
set(allowed_sampling sampling)
set(allowed_probes probes sampling)
set(allowed_process process sampling)
set(allowed_termination termination process sampling)
set(allowed_dashboard dashboard termination process probes sampling)
set(allowed_platform platform termination process probes sampling)

if(NOT IS_DIRECTORY "${KW_SOURCE_DIR}")
    message(FATAL_ERROR "CheckLayers: KW_SOURCE_DIR is not a folder: '${KW_SOURCE_DIR}'")
endif()

set(violations)
foreach(layer sampling probes process termination dashboard platform)
    file(GLOB_RECURSE files "${KW_SOURCE_DIR}/${layer}/*.h" "${KW_SOURCE_DIR}/${layer}/*.cpp")
    foreach(file IN LISTS files)
        file(STRINGS "${file}" lines REGEX "^[ \t]*#[ \t]*include[ \t]*[\"<][a-z]+/")
        foreach(line IN LISTS lines)
            string(REGEX MATCH "include[ \t]*[\"<]([a-z]+)/" _ "${line}")
            set(target "${CMAKE_MATCH_1}")
            # Only the tree's own folders are layers; <sys/...> and the like are not.
            if(NOT IS_DIRECTORY "${KW_SOURCE_DIR}/${target}")
                continue()
            endif()
            if(NOT target IN_LIST allowed_${layer})
                file(RELATIVE_PATH where "${KW_SOURCE_DIR}" "${file}")
                string(STRIP "${line}" line)
                list(JOIN allowed_${layer} ", " allowed)
                list(APPEND violations "  src/${where}: ${line}  (${layer}/ may include: ${allowed})")
            endif()
        endforeach()
    endforeach()
endforeach()

if(violations)
    list(JOIN violations "\n" text)
    message(FATAL_ERROR "Includes that run up the layers (docs/ARCHITECTURE.md):\n${text}\n"
        "Move the record or function to the lowest layer that uses it.")
endif()

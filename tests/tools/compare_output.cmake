# Runs TOOL (through EMULATOR when cross-built) with `mapkeys --install-dir /qvx`, or with
# `resfile` when MODE is resfile (or `tree` on an installation when MODE is tree), on the file
# INPUT, or on each *.pro file of INPUT_DIR, and compares its output with the file of the same name plus ".expected"
# in EXPECTED_DIR, byte for byte.
if(INPUT_DIR)
    file(GLOB INPUTS ${INPUT_DIR}/*.pro)
else()
    set(INPUTS ${INPUT})
endif()
foreach(input IN LISTS INPUTS)
    get_filename_component(name ${input} NAME)
    set(arg ${input})
    if(EMULATOR)
        set(run ${EMULATOR} ${TOOL})
        set(arg "Z:${input}")  # the build machine's paths, as Wine shows them
    else()
        set(run ${TOOL})
    endif()
    if(MODE STREQUAL "resfile")
        set(command resfile)
    elseif(MODE STREQUAL "lint")
        set(command lint)
    elseif(MODE STREQUAL "tree")
        # INPUT is an installation; its own config.pro gives the mapkeys. LANG is set, so the
        # installation's language file is read whatever the caller's environment says.
        set(ENV{LANG} C)
        set(command tree --install ${input} --known ${KNOWN})
        set(arg ${input}/text/config.pro)
    else()
        set(command mapkeys --install-dir /qvx)
    endif()
    execute_process(COMMAND ${run} ${command} ${arg} OUTPUT_VARIABLE out
                    RESULT_VARIABLE rc)
    file(READ ${EXPECTED_DIR}/${name}${SUFFIX}.expected expected)
    if(EMULATOR)
        string(REPLACE "Z:${input}" "${input}" out "${out}")
    endif()
    string(REPLACE "${input}" "${name}" out "${out}")  # lint names the file as it was given
    if(NOT rc EQUAL 0 OR NOT out STREQUAL expected)
        message(FATAL_ERROR "qvxtool output for ${name} differs (exit ${rc}):\n${out}")
    endif()
endforeach()

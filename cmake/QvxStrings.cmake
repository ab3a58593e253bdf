# The plug-in's string table is kept in one file, src/res/strings.tsv (id, language id, UTF-8
# text; '#' starts a comment line). qvx_generate_strings() turns it, at configure time, into
#   OUT_DIR/string_table.inc   rows {id, language, "text"} for the native build's table
#   OUT_DIR/strings.rc         one STRINGTABLE per language for the DLL's resources
# and makes CMake configure again whenever the file changes.

function(qvx_generate_strings tsv out_dir)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${tsv})
    file(STRINGS ${tsv} lines ENCODING UTF-8)
    get_filename_component(source ${tsv} NAME)
    set(inc "// Generated from ${source}; edit that file.\n")
    set(languages "")
    foreach(line IN LISTS lines)
        if(line MATCHES "^#" OR line STREQUAL "")
            continue()
        endif()
        if(NOT line MATCHES "^([0-9]+)\t([0-9]+)\t(.*)$")
            message(FATAL_ERROR "${tsv}: not id<TAB>language<TAB>text: ${line}")
        endif()
        set(id ${CMAKE_MATCH_1})
        set(lang ${CMAKE_MATCH_2})
        set(text "${CMAKE_MATCH_3}")
        if(text MATCHES "\"")
            message(FATAL_ERROR "${tsv}: a text may not hold a double quote: ${line}")
        endif()
        string(APPEND inc "{${id}, ${lang}, \"${text}\"},\n")
        if(NOT lang IN_LIST languages)
            list(APPEND languages ${lang})
            set(rows_${lang} "")
        endif()
        # Narrow strings: windres converts them from the script's code page (UTF-8, set at its
        # top); wide ones it would take byte by byte.
        string(APPEND rows_${lang} "    ${id}, \"${text}\"\n")
    endforeach()
    set(rc "// Generated from ${source}; edit that file.\n#pragma code_page(65001)\n")
    foreach(lang IN LISTS languages)
        math(EXPR primary "${lang} & 0x3FF")
        math(EXPR sub "${lang} >> 10")
        string(APPEND rc "\nLANGUAGE ${primary}, ${sub}\nSTRINGTABLE\nBEGIN\n${rows_${lang}}END\n")
    endforeach()
    file(CONFIGURE OUTPUT ${out_dir}/string_table.inc CONTENT "${inc}" @ONLY)
    file(CONFIGURE OUTPUT ${out_dir}/strings.rc CONTENT "${rc}" @ONLY)
endfunction()

# vendel_add_translations(<target> <catalogue> <folder> <sources>...): one catalogue per shipped language,
# <folder>/<catalogue>_<language>.ts, kept current by lupdate from <sources> and compiled by lrelease into
# resources of <target> under :/i18n. Locations are left out of the files, so that an edit near a text does not
# change a catalogue; texts that left the sources leave the catalogues.
set(VENDEL_LUPDATE_OPTIONS -locations none -no-obsolete)

function(vendel_add_translations target catalogue folder)
    set(ts_files)
    foreach(language IN LISTS VENDEL_LANGUAGES)
        set(ts_file ${folder}/${catalogue}_${language}.ts)
        # A new language starts as an empty catalogue that lupdate fills; left missing, Qt would make the
        # build write it afresh from no sources, and so empty it again after every translation.
        if(NOT EXISTS ${ts_file})
            file(WRITE ${ts_file} "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE TS>\n"
                                  "<TS version=\"2.1\" language=\"${language}\">\n</TS>\n")
        endif()
        list(APPEND ts_files ${ts_file})
    endforeach()
    qt_add_translations(${target}
        TS_FILES ${ts_files}
        SOURCES ${ARGN}
        RESOURCE_PREFIX /i18n
        LUPDATE_OPTIONS ${VENDEL_LUPDATE_OPTIONS}
        LRELEASE_OPTIONS -silent)
endfunction()

# vendel_add_translations(<target> <catalogue> <folder> <sources>...): one catalogue per shipped language,
# <folder>/<catalogue>_<language>.ts, kept current by lupdate from <sources> and compiled by lrelease into
# resources of <target> under :/i18n. Locations are left out of the files, so that an edit near a text does not
# change a catalogue; texts that left the sources leave the catalogues.
set(VENDEL_LUPDATE_OPTIONS -locations none -no-obsolete)

function(vendel_add_translations target catalogue folder)
    set(ts_files)
    foreach(language IN LISTS VENDEL_LANGUAGES)
        list(APPEND ts_files ${folder}/${catalogue}_${language}.ts)
    endforeach()
    qt_add_translations(${target}
        TS_FILES ${ts_files}
        SOURCES ${ARGN}
        RESOURCE_PREFIX /i18n
        LUPDATE_OPTIONS ${VENDEL_LUPDATE_OPTIONS}
        LRELEASE_OPTIONS -silent)
endfunction()

# The product's translations: translations/<catalogue>_<language>.ts, one catalogue per part that
# ships on its own (parvexbase: base/, parvex: parvex/, parvex-config: app/ and driver/).
#
# Every .ts becomes a .qm in <build>/share/parvex/translations, the layout of the install, so that a
# program run from the build folder finds its catalogues at ../share/parvex/translations just as the
# installed one does. The libraries' catalogues install with the runtime component, the
# application's with the application.
#
# `update-translations` (not part of the normal build) reruns lupdate on the sources, which adds new
# texts as unfinished and marks vanished ones obsolete. Source locations are left out of the files:
# line numbers change with every edit, and parallel work on code and translations would then
# conflict on every entry.
set(PARVEX_TRANSLATIONS_BUILD_DIR "${PROJECT_BINARY_DIR}/share/parvex/translations")
set(PARVEX_INSTALL_TRANSLATIONSDIR "${CMAKE_INSTALL_DATADIR}/parvex/translations")

file(GLOB lTsFiles CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/translations/*.ts")
set(lQmFiles)
foreach(lTs IN LISTS lTsFiles)
  get_filename_component(lName "${lTs}" NAME_WE)
  set(lQm "${PARVEX_TRANSLATIONS_BUILD_DIR}/${lName}.qm")
  add_custom_command(OUTPUT "${lQm}"
    COMMAND ${CMAKE_COMMAND} -E make_directory "${PARVEX_TRANSLATIONS_BUILD_DIR}"
    COMMAND Qt5::lrelease -silent "${lTs}" -qm "${lQm}"
    DEPENDS "${lTs}"
    COMMENT "Translation ${lName}"
    VERBATIM)
  list(APPEND lQmFiles "${lQm}")
  if(lName MATCHES "^parvex-config_")
    set(lComponent app)
  else()
    set(lComponent runtime)
  endif()
  install(FILES "${lQm}" DESTINATION "${PARVEX_INSTALL_TRANSLATIONSDIR}" COMPONENT ${lComponent})
endforeach()
add_custom_target(translations ALL DEPENDS ${lQmFiles})

set(lUpdateCommands)
foreach(lCatalogue "parvexbase=base" "parvex=parvex" "parvex-config=app;driver")
  string(REPLACE "=" ";" lPair "${lCatalogue}")
  list(POP_FRONT lPair lName)
  file(GLOB lCatalogueTs "${PROJECT_SOURCE_DIR}/translations/${lName}_*.ts")
  foreach(lTs IN LISTS lCatalogueTs)
    list(APPEND lUpdateCommands COMMAND Qt5::lupdate -silent -locations none ${lPair} -ts "${lTs}")
  endforeach()
endforeach()
add_custom_target(update-translations ${lUpdateCommands}
  WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}"
  COMMENT "Refreshing translations/*.ts from the sources"
  VERBATIM)

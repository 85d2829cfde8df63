# Debian packages from the install components (cpack -G DEB in the build folder):
#   libparvex3     runtime: libParvexTech.so.3, libParvex.so.3 and their SONAME links
#   libparvex-dev  dev:     headers, the unversioned links, the CMake package
#   parvex-config  app:     the application, the reference driver, desktop entry, icons, metadata
#   parvex-tools   tools:   parvex-cli and parvex-sim
# Dependencies on Debian's libraries come from dpkg-shlibdeps; those between our own packages from
# the component graph, pinned to this exact version because they share private ABI.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME parvex)
set(CPACK_PACKAGE_VENDOR "Parvex")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
# Each package's description starts with its own summary line. CPack puts the project summary in
# front of it unless the summary is CPack's default text, so it is set to exactly that.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_NAME} built using CMake")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://www.parvex.example/desktop")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Parvex desktop team <desktop@parvex.example>")
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_COMPONENTS_ALL runtime dev app tools)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libparvex3)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
# The dynamic linker's cache is refreshed by dpkg's trigger rather than by a script of ours.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/app/share/debian/triggers")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "Parvex range-finding sensor framework libraries
The libraries under the Parvex desktop suite: libParvexTech (basic types,
errors, the sectioned document format, dialogs and graphs) and libParvex
(device menu, connections, device model, the PtCom protocol, recording,
replay, echo logging, dock forms and property-bound widgets).")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libparvex-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "qtbase5-dev, libqt5serialport5-dev, libqt5serialbus5-dev")
set(CPACK_COMPONENT_DEV_DEPENDS runtime)
set(CPACK_DEBIAN_DEV_DESCRIPTION "Parvex range-finding sensor framework, development files
Headers, unversioned library links and the CMake package
(find_package(Parvex)) for writing device drivers and host applications
against libParvex and libParvexTech.")

set(CPACK_DEBIAN_APP_PACKAGE_NAME parvex-config)
set(CPACK_DEBIAN_APP_PACKAGE_SECTION science)
set(CPACK_COMPONENT_APP_DEPENDS runtime)
set(CPACK_DEBIAN_APP_DESCRIPTION "configure and monitor Parvex range-finding sensors
The desktop application with which people install, commission and service
Parvex lidar sensors: connect, edit and apply the configuration, watch traces,
echoes and the sensor's state, record, replay and extract measurement data,
log echoes to text files and update the firmware. It includes the reference
driver with a built-in simulated sensor.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME parvex-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION science)
# parvex-cli talks to sensors through the reference driver, which the application package ships.
set(CPACK_COMPONENT_TOOLS_DEPENDS runtime app)
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "command-line tools for Parvex range-finding sensors
parvex-cli configures, records and logs Parvex sensors from a terminal and
inspects, extracts and exports record files; parvex-sim serves a simulated
 16-segment sensor over TCP for trying the suite without hardware.")

# dpkg-shlibdeps must find our own libraries in cpack's staging tree; they belong to our packages,
# so their package dependencies come from the component graph above. The staging tree lies under
# the output folder, which is only known when cpack runs (cpack -B), hence the project file.
set(CPACK_PACKAGE_FILE_NAME "parvex-${PROJECT_VERSION}-Linux")
set(CPACK_PROJECT_CONFIG_FILE "${CMAKE_BINARY_DIR}/packaging/ParvexCPackProject.cmake")
file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/packaging")
file(WRITE "${CPACK_PROJECT_CONFIG_FILE}" "
set(lStaging \"\${CPACK_PACKAGE_DIRECTORY}/_CPack_Packages/Linux/DEB/\${CPACK_PACKAGE_FILE_NAME}\")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
  \"\${lStaging}/runtime/usr/${CMAKE_INSTALL_LIBDIR}\" \"\${lStaging}/app/usr/${PARVEX_INSTALL_PRIVATE_LIBDIR}\")
")

# Every package carries the copyright file and the Debian changelog Debian's policy asks for.
set(lChangelog "${CMAKE_BINARY_DIR}/packaging/changelog.Debian.gz")
file(ARCHIVE_CREATE OUTPUT "${lChangelog}" PATHS "${PROJECT_SOURCE_DIR}/app/share/debian/changelog"
  FORMAT raw COMPRESSION GZip COMPRESSION_LEVEL 9)
foreach(lComponent runtime dev app tools)
  string(TOUPPER "${lComponent}" lUpper)
  install(FILES "${PROJECT_SOURCE_DIR}/app/share/debian/copyright" "${lChangelog}"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${lUpper}_PACKAGE_NAME}" COMPONENT ${lComponent})
endforeach()
include(CPack)

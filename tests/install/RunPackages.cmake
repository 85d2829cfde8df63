# Makes the Debian packages from this build, unpacks them into a scratch root (nothing on the
# machine changes), and checks them the way a user's system would meet them: lintian finds no error,
# the AppStream metadata validates, the installed programs run, and a driver-like project builds
# against the headers and CMake package of libparvex-dev alone.
file(REMOVE_RECURSE "${WORK_DIR}")
set(lRoot "${WORK_DIR}/root")
file(MAKE_DIRECTORY "${lRoot}")

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE lResult OUTPUT_VARIABLE lOut ERROR_VARIABLE lOut)
  if(NOT lResult EQUAL 0)
    message(FATAL_ERROR "Failed (${lResult}): ${ARGN}\n${lOut}")
  endif()
  message(STATUS "${lOut}")
endfunction()

string(TIMESTAMP lStart "%s")
run(cpack -G DEB -B "${WORK_DIR}/debs" --config "${BUILD_DIR}/CPackConfig.cmake")
string(TIMESTAMP lEnd "%s")
math(EXPR lSeconds "${lEnd} - ${lStart}")
message(STATUS "cpack took ${lSeconds} s")
file(GLOB lDebs "${WORK_DIR}/debs/*.deb")
list(LENGTH lDebs lCount)
if(NOT lCount EQUAL 4)
  message(FATAL_ERROR "expected the four packages, got: ${lDebs}")
endif()
foreach(lDeb IN LISTS lDebs)
  run(dpkg-deb -x "${lDeb}" "${lRoot}")
endforeach()

find_program(LINTIAN lintian)
if(LINTIAN)
  run("${LINTIAN}" --fail-on error ${lDebs})
else()
  message(STATUS "lintian not installed: package checks skipped")
endif()
find_program(APPSTREAMCLI appstreamcli)
if(APPSTREAMCLI)
  file(GLOB lMetainfo "${lRoot}/usr/share/metainfo/*.xml")
  run("${APPSTREAMCLI}" validate --no-net ${lMetainfo})
else()
  message(STATUS "appstreamcli not installed: metadata check skipped")
endif()
foreach(lPage parvex-config parvex-cli parvex-sim)
  if(NOT EXISTS "${lRoot}/usr/share/man/man1/${lPage}.1.gz")
    message(FATAL_ERROR "no manual page for ${lPage}")
  endif()
endforeach()

# The catalogues the programs load at start, beside the programs' share folder.
foreach(lCatalogue parvexbase_de parvex_de parvex-config_de)
  if(NOT EXISTS "${lRoot}/usr/share/parvex/translations/${lCatalogue}.qm")
    message(FATAL_ERROR "no ${lCatalogue} catalogue in the packages")
  endif()
endforeach()

# The installed programs find their libraries in the root (the driver through its own RPATH).
set(ENV{LD_LIBRARY_PATH} "${lRoot}/usr/lib")
foreach(lProgram parvex-config parvex-cli parvex-sim)
  run("${lRoot}/usr/bin/${lProgram}" --version)
endforeach()

run(${CMAKE_COMMAND} -S "${CONSUMER_DIR}" -B "${WORK_DIR}/consumer" -G "${GENERATOR}"
    "-DCMAKE_CXX_COMPILER=${CXX}" "-DCMAKE_PREFIX_PATH=${lRoot}/usr")
run(${CMAKE_COMMAND} --build "${WORK_DIR}/consumer")
run("${WORK_DIR}/consumer/consumer")

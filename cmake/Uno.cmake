# The programming interface of LibreOffice: headers of its types are made by its own tool, into the build folder.
# Gives the target uno.
find_path(UNO_SDK sdk/bin/cppumaker PATHS /usr/lib/libreoffice /usr/lib64/libreoffice /opt/libreoffice REQUIRED NO_DEFAULT_PATH)
find_path(UNO_INCLUDE cppuhelper/bootstrap.hxx PATHS ${UNO_SDK}/sdk/include /usr/include/libreoffice REQUIRED NO_DEFAULT_PATH)

set(UNO_TYPES ${PROJECT_BINARY_DIR}/uno)
set(UNO_STAMP ${UNO_TYPES}/made)
add_custom_command(
  OUTPUT ${UNO_STAMP}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${UNO_TYPES}
  COMMAND ${UNO_SDK}/sdk/bin/cppumaker -Gc -O${UNO_TYPES} ${UNO_SDK}/program/types.rdb ${UNO_SDK}/program/types/offapi.rdb
  COMMAND ${CMAKE_COMMAND} -E touch ${UNO_STAMP}
  DEPENDS ${UNO_SDK}/program/types/offapi.rdb
  COMMENT "Making the headers of LibreOffice's types"
  VERBATIM)
add_custom_target(uno_types DEPENDS ${UNO_STAMP})

add_library(uno INTERFACE)
add_dependencies(uno uno_types)
target_include_directories(uno SYSTEM INTERFACE ${UNO_TYPES} ${UNO_INCLUDE})
target_compile_definitions(uno INTERFACE LINUX UNX GCC CPPU_ENV=gcc3)
target_link_directories(uno INTERFACE ${UNO_SDK}/sdk/lib)
target_link_libraries(uno INTERFACE uno_cppuhelpergcc3 uno_cppu uno_salhelpergcc3 uno_sal)
target_link_options(uno INTERFACE -Wl,-rpath,${UNO_SDK}/program -Wl,-rpath-link,${UNO_SDK}/program)

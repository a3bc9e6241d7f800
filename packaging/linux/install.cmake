# What an installation on Linux consists of: cmake --install build/release [--prefix /usr].
#
# The program finds its parts from where it is itself, so the tree may be moved. Only the password
# prompt's own words depend on the place: polkit names the helper by its path and reads
# /usr/share/polkit-1 alone. The udev rule stays beside the helper, which puts it in force when the
# person agrees; a package that does so for everybody runs the helper itself.
include(GNUInstallDirs)
set(here ${CMAKE_CURRENT_LIST_DIR})
set(applications ${CMAKE_INSTALL_DATADIR}/applications)
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
set(private_libexec ${CMAKE_INSTALL_LIBEXECDIR}/velotap)

install(TARGETS velotap RUNTIME)
if(TARGET velotap-desktop)
  install(TARGETS velotap-desktop RUNTIME)
endif()
# Beside the program in every layout: one of its private folders, not the linker's.
install(TARGETS velotap-multitouch LIBRARY DESTINATION lib/velotap)

install(PROGRAMS ${here}/../grant-access DESTINATION ${private_libexec})
install(FILES ${here}/../udev/70-velotap.rules DESTINATION ${private_libexec}/udev)
install(FILES ${here}/../modules-load/velotap.conf DESTINATION ${private_libexec}/modules-load)
install(CODE "
  file(READ \"${here}/../polkit/app.norwend.velotap.policy\" policy)
  string(REPLACE /usr/libexec/velotap/grant-access
    \"\${CMAKE_INSTALL_PREFIX}/${private_libexec}/grant-access\" policy \"\${policy}\")
  file(WRITE \"${CMAKE_BINARY_DIR}/app.norwend.velotap.policy\" \"\${policy}\")
")
install(FILES ${CMAKE_BINARY_DIR}/app.norwend.velotap.policy
  DESTINATION ${CMAKE_INSTALL_DATADIR}/polkit-1/actions)

install(FILES ${here}/app.norwend.velotap.desktop DESTINATION ${applications})
install(FILES ${here}/app.norwend.velotap.metainfo.xml
  DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${here}/app.norwend.velotap.svg DESTINATION ${icons}/scalable/apps)
# The status item's marks, under the names by which a desktop colours them itself. Desktops fill
# every shape for that, so unlike the program's own symbols these have no strokes.
install(DIRECTORY ${here}/symbolic/ DESTINATION ${icons}/symbolic/apps)

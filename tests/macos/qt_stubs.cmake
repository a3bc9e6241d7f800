# Lets the windows be configured and linked for macOS with the Qt of this system: its headers and its
# build rules know what a Mac is, and its libraries are replaced by stubs of what they export.
#
#   cmake ... -DCMAKE_PROJECT_velotap_INCLUDE=tests/macos/qt_stubs.cmake
#
# VELOTAP_MACOS_STUBS has the stubs (stubs.py). Included by the project before it looks for Qt.
set(here /usr/lib/x86_64-linux-gnu/cmake)
set(Qt6_DIR ${here}/Qt6 CACHE PATH "")
set(QT_HOST_PATH /usr CACHE PATH "")
set(QT_HOST_PATH_CMAKE_DIR ${here} CACHE PATH "")
# A framework of the system that Qt looks for and the program does not use.
set(OPENGL_gl_LIBRARY ${VELOTAP_MACOS_STUBS}/System/Library/Frameworks/OpenGL.framework CACHE PATH "")
set(OPENGL_INCLUDE_DIR ${OPENGL_gl_LIBRARY} CACHE PATH "")

# Once all targets exist: everything from there on is generation.
function(velotap_use_qt_stubs)
  foreach(module Core Gui Network OpenGL Qml QmlModels Quick Svg)
    set_target_properties(Qt6::${module} PROPERTIES
      IMPORTED_CONFIGURATIONS RELEASE
      IMPORTED_LOCATION_RELEASE ${VELOTAP_MACOS_STUBS}/qt/Qt${module}.tbd)
  endforeach()
  # What Qt asks of this system's graphics, with the headers of another C library behind it.
  foreach(target WrapVulkanHeaders::WrapVulkanHeaders XKB::XKB)
    if(TARGET ${target})
      set_target_properties(${target} PROPERTIES
        INTERFACE_INCLUDE_DIRECTORIES "" INTERFACE_LINK_LIBRARIES "")
    endif()
  endforeach()
  set_target_properties(WrapOpenGL::WrapOpenGL PROPERTIES INTERFACE_LINK_LIBRARIES "")
endfunction()
cmake_language(DEFER DIRECTORY ${CMAKE_SOURCE_DIR} CALL velotap_use_qt_stubs)

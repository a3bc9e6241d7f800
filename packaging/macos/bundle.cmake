# The application bundle.
#
#   velotap_bundle(TARGET SOURCES file... USES room...)
set(VELOTAP_UPDATE_FEED "" CACHE STRING
  "Where new versions are announced (an appcast); empty for a build without updates")
set(VELOTAP_UPDATE_KEY "" CACHE STRING "Public EdDSA key that updates are signed with")
set(VELOTAP_SPARKLE "" CACHE PATH "Sparkle.framework to bring along; empty for none")

set(VELOTAP_MACOS_PACKAGING ${CMAKE_CURRENT_LIST_DIR})
set(VELOTAP_LANGUAGES en bg de es fr)

function(velotap_bundle target)
  cmake_parse_arguments(BUNDLE "" "" "SOURCES;USES" ${ARGN})
  list(TRANSFORM BUNDLE_USES PREPEND velotap_ OUTPUT_VARIABLE links)
  set(icon ${CMAKE_CURRENT_BINARY_DIR}/Velotap.icns)
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  add_custom_command(OUTPUT ${icon}
    COMMAND ${Python3_EXECUTABLE} -B ${VELOTAP_MACOS_PACKAGING}/make_icon.py ${icon}
    DEPENDS ${VELOTAP_MACOS_PACKAGING}/make_icon.py VERBATIM)
  add_executable(${target} MACOSX_BUNDLE ${BUNDLE_SOURCES} ${icon})
  target_link_libraries(${target} PRIVATE ${links} velotap_flags)
  set_source_files_properties(${icon} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
  foreach(language IN LISTS VELOTAP_LANGUAGES)
    set(strings ${CMAKE_SOURCE_DIR}/resources/${language}.lproj/Localizable.strings)
    target_sources(${target} PRIVATE ${strings})
    set_source_files_properties(${strings} PROPERTIES
      MACOSX_PACKAGE_LOCATION Resources/${language}.lproj)
  endforeach()
  set_property(SOURCE ${BUNDLE_SOURCES} APPEND PROPERTY COMPILE_OPTIONS
    $<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-arc>)
  set_target_properties(${target} PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}
    MACOSX_BUNDLE_INFO_PLIST ${VELOTAP_MACOS_PACKAGING}/Info.plist.in
    INSTALL_RPATH "@executable_path/../Frameworks"
    BUILD_WITH_INSTALL_RPATH ON)
  if(VELOTAP_SPARKLE)
    add_custom_command(TARGET ${target} POST_BUILD
      COMMAND ${CMAKE_COMMAND} -E copy_directory ${VELOTAP_SPARKLE}
        $<TARGET_BUNDLE_CONTENT_DIR:${target}>/Frameworks/Sparkle.framework VERBATIM)
  endif()
  install(TARGETS ${target} BUNDLE DESTINATION .)
endfunction()

set(VELOTAP_THIRD_PARTY_NOTICES ${VELOTAP_MACOS_PACKAGING}/ThirdPartyNotices.txt CACHE FILEPATH
  "What the program is made of besides, and on which terms; the About pane shows it")

# Only for a build with windows, which have a place to show them. Whoever gives Qt and the typeface
# on must give the texts of their licences along; that of the updater lies beside its framework.
function(velotap_bundle_notices target)
  set(notices ${CMAKE_CURRENT_BINARY_DIR}/ThirdPartyNotices.txt)
  file(GLOB licences CONFIGURE_DEPENDS ${VELOTAP_MACOS_PACKAGING}/licences/*.txt)
  if(VELOTAP_SPARKLE)
    get_filename_component(beside ${VELOTAP_SPARKLE} DIRECTORY)
    if(NOT EXISTS ${beside}/LICENSE)
      message(FATAL_ERROR "Sparkle's LICENSE must lie beside ${VELOTAP_SPARKLE}")
    endif()
    list(APPEND licences ${beside}/LICENSE)
  endif()
  file(READ ${VELOTAP_THIRD_PARTY_NOTICES} text)
  file(WRITE ${notices}.new "${text}")
  foreach(licence IN LISTS licences)
    get_filename_component(name ${licence} NAME)
    string(REPLACE ".txt" "" name ${name})
    string(REPLACE "LICENSE" "Sparkle, which brings updates" name ${name})
    file(READ ${licence} text)
    file(APPEND ${notices}.new "\n\n=== ${name} ===\n\n${text}")
  endforeach()
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
    ${VELOTAP_THIRD_PARTY_NOTICES} ${licences})
  file(COPY_FILE ${notices}.new ${notices} ONLY_IF_DIFFERENT)
  qt_add_resources(${target} notices PREFIX /velotap BASE ${CMAKE_CURRENT_BINARY_DIR}
    FILES ${notices})
endfunction()

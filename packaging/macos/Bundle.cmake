# Larkspool.app. The executable lies in Contents/MacOS and looks for the sound library under
# ../lib/larkspool, as everywhere.
if(NOT TARGET larkspool OR NOT TARGET tonebridge)
  return()
endif()

set(icon_set ${CMAKE_CURRENT_BINARY_DIR}/larkspool.iconset)
set(icon ${CMAKE_CURRENT_BINARY_DIR}/larkspool.icns)
add_custom_command(OUTPUT ${icon}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${icon_set}
  COMMAND ${CMAKE_COMMAND} -E copy ${CMAKE_CURRENT_SOURCE_DIR}/icons/larkspool-128.png ${icon_set}/icon_128x128.png
  COMMAND iconutil --convert icns --output ${icon} ${icon_set}
  DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/icons/larkspool-128.png)

set_target_properties(larkspool PROPERTIES
  MACOSX_BUNDLE ON
  OUTPUT_NAME Larkspool
  MACOSX_BUNDLE_SHORT_VERSION_STRING ${LARKSPOOL_VERSION}
  MACOSX_BUNDLE_INFO_PLIST ${CMAKE_CURRENT_SOURCE_DIR}/macos/Info.plist.in)
# A target of its own, because only the folder that makes the program could add steps to it.
add_custom_target(larkspool_bundle ALL DEPENDS ${icon}
  COMMAND ${CMAKE_COMMAND} -E make_directory
    $<TARGET_BUNDLE_CONTENT_DIR:larkspool>/lib/larkspool $<TARGET_BUNDLE_CONTENT_DIR:larkspool>/Resources
  COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_FILE:tonebridge>
    $<TARGET_BUNDLE_CONTENT_DIR:larkspool>/lib/larkspool
  COMMAND ${CMAKE_COMMAND} -E copy ${icon} $<TARGET_BUNDLE_CONTENT_DIR:larkspool>/Resources)
add_dependencies(larkspool_bundle larkspool tonebridge)
set(CPACK_GENERATOR DragNDrop)

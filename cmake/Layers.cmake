# Layering is kept by the compiler: a target sees only the rooms named here, through a folder of
# links made for it alone, and nothing passes on from one target to the next.
#
#   layer_may_include(Moravel Platform/Foundation Platform/AppKit Typloom/TyploomCore)
#
# A room is a folder, or a single header.
function(layer_may_include target)
    set(root ${CMAKE_BINARY_DIR}/layers/${target})
    foreach(room IN LISTS ARGN)
        get_filename_component(parent ${root}/${room} DIRECTORY)
        file(MAKE_DIRECTORY ${parent})
        file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${room} ${root}/${room} SYMBOLIC)
    endforeach()
    target_include_directories(${target} PRIVATE ${root})
endfunction()

# The layers of the program, and the wall between them.
#
# ulk_layer(<name> FOLDERS <folder>... [EXCEPT <source>...] [ABOVE <layer>...] [LIBRARIES <library>...]) makes the object
# library ulk_<name> of every source below the folders of src/. A layer finds its own headers and those of the layers that
# it stands above, and no others: each layer gives its users one include directory that holds nothing but links to its
# folders. An include of a header from a layer above, or beside, does not compile.
function(ulk_layer name)
  cmake_parse_arguments(LAYER "" "" "FOLDERS;EXCEPT;ABOVE;LIBRARIES" ${ARGN})
  set(include_root ${PROJECT_BINARY_DIR}/layers/${name})
  file(REMOVE_RECURSE ${include_root})
  set(sources "")
  foreach(folder ${LAYER_FOLDERS})
    file(GLOB_RECURSE found CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
    list(APPEND sources ${found})
    cmake_path(GET folder PARENT_PATH parent)
    file(MAKE_DIRECTORY ${include_root}/${parent})
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${folder} ${include_root}/${folder} SYMBOLIC)
  endforeach()
  foreach(source ${LAYER_EXCEPT})
    list(REMOVE_ITEM sources ${CMAKE_CURRENT_SOURCE_DIR}/${source})
  endforeach()

  add_library(ulk_${name} OBJECT ${sources})
  target_include_directories(ulk_${name} PUBLIC ${include_root})
  target_link_libraries(ulk_${name} PUBLIC ulk_options ${LAYER_LIBRARIES})
  foreach(layer ${LAYER_ABOVE})
    target_link_libraries(ulk_${name} PUBLIC ulk_${layer})
  endforeach()
  set_target_properties(ulk_${name} PROPERTIES ULK_LIBRARIES "${LAYER_LIBRARIES}")
endfunction()

# ulk_sum(<name> <layer>...) makes the library <name> of the objects of layers. Its users find all headers of src/.
function(ulk_sum name)
  add_library(${name} STATIC)
  target_include_directories(${name} INTERFACE ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ulk_options)
  foreach(layer ${ARGN})
    get_target_property(libraries ulk_${layer} ULK_LIBRARIES)
    target_sources(${name} PRIVATE $<TARGET_OBJECTS:ulk_${layer}>)
    target_link_libraries(${name} PUBLIC ${libraries})
  endforeach()
endfunction()

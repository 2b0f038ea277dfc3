# Embeds GLSL sources as string constants.
#
# ulk_embed_shaders(<target> <header> <source>...) adds to <target> a generated file that defines, for each
# source, the constant that <header> declares for it: "shader.vsd" becomes ulk3d::shaders::shader_vsd. The file
# is made again when a source changes. It is written by this same file, run as a script.

if(CMAKE_SCRIPT_MODE_FILE)
  set(code "// Made from the GLSL sources by cmake/EmbedShaders.cmake.\n#include \"${HEADER}\"\n\n")
  string(APPEND code "namespace ulk3d::shaders {\n\n")
  foreach(source IN LISTS SOURCES)
    get_filename_component(name ${source} NAME)
    string(MAKE_C_IDENTIFIER ${name} identifier)
    file(READ ${source} text)
    string(APPEND code
      "const shader_source_t ${identifier} = {\"${name}\", R\"glsl(${text})glsl\"};\n\n")
  endforeach()
  string(APPEND code "}  // namespace ulk3d::shaders\n")
  file(WRITE ${OUTPUT} "${code}")
  return()
endif()

set(ULK_EMBED_SHADERS_SCRIPT ${CMAKE_CURRENT_LIST_FILE})

function(ulk_embed_shaders target header)
  list(TRANSFORM ARGN PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/ OUTPUT_VARIABLE sources)
  set(output ${CMAKE_CURRENT_BINARY_DIR}/embedded_shaders.cpp)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} "-DSOURCES=${sources}" -DHEADER=${header} -DOUTPUT=${output}
      -P ${ULK_EMBED_SHADERS_SCRIPT}
    DEPENDS ${sources} ${ULK_EMBED_SHADERS_SCRIPT}
    COMMENT "Embedding the GLSL sources"
    VERBATIM)
  target_sources(${target} PRIVATE ${output})
endfunction()

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
find_package(GLEW REQUIRED)
find_package(JPEG REQUIRED)
find_package(PNG REQUIRED)
set(OpenGL_GL_PREFERENCE GLVND)
find_package(OpenGL REQUIRED COMPONENTS OpenGL EGL)

pkg_check_modules(SIGCXX REQUIRED IMPORTED_TARGET sigc++-2.0)
pkg_check_modules(GTKMM REQUIRED IMPORTED_TARGET gtkmm-3.0)

# The system's own interpreter: it is the one that has the bindings from the packages.
find_program(SYSTEM_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH REQUIRED)

# Without it `ulktool tidy` says that it is missing.
find_package(meshoptimizer QUIET)
# Formats of other programs in ulktool, and a peer of the benchmarks. Without it both are left out.
pkg_check_modules(ASSIMP IMPORTED_TARGET assimp)
set(ULK_HAVE_ASSIMP ${ASSIMP_FOUND})

if(ULK_BUILD_TESTS)
  find_package(GTest REQUIRED)
endif()
if(ULK_BUILD_BENCHMARKS)
  find_package(benchmark REQUIRED)
  # Others to measure against; each comparison is left out without its library. CGAL cuts meshes, SISL evaluates NURBS
  # surfaces, the rest read mesh files.
  find_package(CGAL QUIET)
  find_package(VTK QUIET COMPONENTS IOGeometry)
  pkg_check_modules(ADMESH QUIET IMPORTED_TARGET libadmesh)
  pkg_check_modules(TINYOBJLOADER QUIET IMPORTED_TARGET tinyobjloader)
  find_library(SISL_LIBRARY sisl)
  find_path(SISL_INCLUDE_DIR sisl.h)
  mark_as_advanced(SISL_LIBRARY SISL_INCLUDE_DIR)
endif()

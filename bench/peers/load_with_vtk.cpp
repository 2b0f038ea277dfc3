#include <vtkNew.h>
#include <vtkOBJReader.h>
#include <vtkOBJWriter.h>
#include <vtkPolyData.h>
#include <vtkSTLReader.h>
#include <vtkSTLWriter.h>
#include <vtkSmartPointer.h>

#include <string_view>

#include "load_way.h"

/// VTK's readers. From STL: three points for each triangle, which are not merged as ours are not either. From
/// OBJ: points with normals and texture coordinates, and polygons.
namespace {

vtkSmartPointer<vtkPolyData>& mesh() {
    static auto* const the_mesh = new vtkSmartPointer<vtkPolyData>;
    return *the_mesh;
}

template <typename Reader>
bool load_with(Reader& reader, const char* path) {
    reader.SetFileName(path);
    reader.Update();
    mesh() = reader.GetOutput();
    return reader.GetErrorCode() == 0;
}

template <typename Writer>
bool save_with(Writer& writer, const char* path) {
    writer.SetFileName(path);
    writer.SetInputData(mesh());
    return writer.Write() != 0 && writer.GetErrorCode() == 0;
}

}  // namespace

void prepare_to_load() {}

bool load_file(const char* path) {
    if (std::string_view(path).ends_with(".stl")) {
        const vtkNew<vtkSTLReader> reader;
        reader->MergingOff();
        return load_with(*reader, path);
    }
    const vtkNew<vtkOBJReader> reader;
    return load_with(*reader, path);
}

bool save_file(const char* path) {
    if (std::string_view(path).ends_with(".stl")) {
        const vtkNew<vtkSTLWriter> writer;
        writer->SetFileTypeToBinary();
        return save_with(*writer, path);
    }
    const vtkNew<vtkOBJWriter> writer;
    return save_with(*writer, path);
}

std::uint64_t triangles_loaded() {
    return static_cast<std::uint64_t>(mesh()->GetNumberOfPolys());
}

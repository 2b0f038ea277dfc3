#include "render/gl/query.h"

#include "gltextures/gr_check_error.h"
#include "gltextures/gr_context.h"

namespace ulk3d {

using libgr::grCheckError;

void query_t::allocate() {
    if (allocated)
        return;
    glGenQueries(1, &id);
    allocated = true;
}

void query_t::release() {
    if (!allocated)
        return;
    if (libgr::grContextIsCurrent())
        glDeleteQueries(1, &id);
    allocated = false;
    id = 0;
}

// Indexed queries need GL 4.0. A 3.3 context without them has only the vertex stream 0.
void query_t::begin(GLenum counted, GLuint stream) {
    allocate();
    target = counted;
    index = stream;
    if (glBeginQueryIndexed != nullptr)
        glBeginQueryIndexed(target, index, id);
    else
        glBeginQuery(target, id);
}

void query_t::end() {
    if (glEndQueryIndexed != nullptr)
        glEndQueryIndexed(target, index);
    else
        glEndQuery(target);
    target = 0;
    index = 0;
}

std::uint64_t query_t::GetQuery() const {
    grCheckError("query_t::GetQuery(1)");
    GLuint64 result = 0;
    glGetQueryObjectui64v(id, GL_QUERY_RESULT, &result);
    grCheckError("query_t::GetQuery(end)");
    return result;
}

}  // namespace ulk3d

#include "support/gl_trace.h"

#include <GL/glew.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

namespace {

const std::string call_line = "GL call ";
bool is_tracing = false;

/// Among the error labels, on their stream, so that the order is kept.
void note(const char* call) {
    if (is_tracing)
        std::cerr << call_line << call << std::endl;
}

// --- the functions that the loader gives as pointers ------------------------------------------------------

template <auto& entry_point>
struct loaded_call_t;

template <typename result_t, typename... arguments_t, result_t (*&entry_point)(arguments_t...)>
struct loaded_call_t<entry_point> {
    static inline const char* name = nullptr;
    static inline result_t (*original)(arguments_t...) = nullptr;

    static result_t note_and_call(arguments_t... arguments) {
        note(name);
        return original(arguments...);
    }
    static void exchange(const char* call) {
        if (is_tracing) {
            name = call;
            original = entry_point;
            entry_point = note_and_call;
        } else {
            entry_point = original;
        }
    }
};

struct loaded_call_row_t {
    const char* name;
    void (*exchange)(const char* name);
};

constexpr loaded_call_row_t loaded_calls[] = {
    {"glActiveTexture", loaded_call_t<__glewActiveTexture>::exchange},
    {"glBindBuffer", loaded_call_t<__glewBindBuffer>::exchange},
    {"glBindTransformFeedback", loaded_call_t<__glewBindTransformFeedback>::exchange},
    {"glBindVertexArray", loaded_call_t<__glewBindVertexArray>::exchange},
    {"glBufferData", loaded_call_t<__glewBufferData>::exchange},
    {"glClampColor", loaded_call_t<__glewClampColor>::exchange},
    {"glCreateShader", loaded_call_t<__glewCreateShader>::exchange},
    {"glGenBuffers", loaded_call_t<__glewGenBuffers>::exchange},
    {"glGenVertexArrays", loaded_call_t<__glewGenVertexArrays>::exchange},
    {"glGetBufferParameteri64v", loaded_call_t<__glewGetBufferParameteri64v>::exchange},
    {"glGetUniformLocation", loaded_call_t<__glewGetUniformLocation>::exchange},
    {"glMapBufferRange", loaded_call_t<__glewMapBufferRange>::exchange},
    {"glUniformMatrix4fv", loaded_call_t<__glewUniformMatrix4fv>::exchange},
    {"glUnmapBuffer", loaded_call_t<__glewUnmapBuffer>::exchange},
    {"glUseProgram", loaded_call_t<__glewUseProgram>::exchange},
};

void exchange_all() {
    for (const loaded_call_row_t& row : loaded_calls)
        row.exchange(row.name);
}

// --- the functions that the GL library exports ------------------------------------------------------------

template <auto function, typename... arguments_t>
void note_and_call(const char* name, arguments_t... arguments) {
    static const auto library_function = reinterpret_cast<decltype(function)>(dlsym(RTLD_NEXT, name));
    note(name);
    library_function(arguments...);
}

}  // namespace

// Each takes the place of the GL library's function of its name.
extern "C" {
void GLAPIENTRY glBindTexture(GLenum target, GLuint texture) {
    note_and_call<&glBindTexture>("glBindTexture", target, texture);
}
void GLAPIENTRY glBlendFunc(GLenum source, GLenum destination) {
    note_and_call<&glBlendFunc>("glBlendFunc", source, destination);
}
void GLAPIENTRY glClear(GLbitfield mask) {
    note_and_call<&glClear>("glClear", mask);
}
void GLAPIENTRY glClearColor(GLclampf red, GLclampf green, GLclampf blue, GLclampf alpha) {
    note_and_call<&glClearColor>("glClearColor", red, green, blue, alpha);
}
void GLAPIENTRY glDisable(GLenum capability) {
    note_and_call<&glDisable>("glDisable", capability);
}
void GLAPIENTRY glDrawArrays(GLenum mode, GLint first, GLsizei count) {
    note_and_call<&glDrawArrays>("glDrawArrays", mode, first, count);
}
void GLAPIENTRY glDrawElements(GLenum mode, GLsizei count, GLenum type, const void* indices) {
    note_and_call<&glDrawElements>("glDrawElements", mode, count, type, indices);
}
void GLAPIENTRY glEnable(GLenum capability) {
    note_and_call<&glEnable>("glEnable", capability);
}
void GLAPIENTRY glLineWidth(GLfloat width) {
    note_and_call<&glLineWidth>("glLineWidth", width);
}
void GLAPIENTRY glViewport(GLint x, GLint y, GLsizei width, GLsizei height) {
    note_and_call<&glViewport>("glViewport", x, y, width, height);
}
}

namespace ulk_test {

gl_trace::gl_trace() {
    is_tracing = true;
    exchange_all();
}

gl_trace::~gl_trace() {
    is_tracing = false;
    exchange_all();
    EXPECT_EQ(marks.fetched_errors(), static_cast<int>(marks.beginning_with("").size()))
        << "an error was fetched without a label";
}

std::vector<std::string> gl_trace::events() const {
    std::vector<std::string> found;
    std::istringstream lines(marks.text());
    for (std::string line; std::getline(lines, line);) {
        const std::string event =
            line.starts_with(call_line) ? line.substr(call_line.size()) : forced_mark_of(line);
        if (!event.empty())
            found.push_back(event);
    }
    return found;
}

std::vector<label_place_t> places_of_labels(const std::vector<std::string>& events,
                                            const std::string& prefix) {
    std::vector<label_place_t> places;
    for (std::size_t i = 0; i < events.size(); ++i)
        if (events[i].starts_with(prefix))
            places.push_back(
                {i == 0 ? "" : events[i - 1], events[i], i + 1 == events.size() ? "" : events[i + 1]});
    return places;
}

void PrintTo(const label_place_t& place, std::ostream* out) {
    *out << "{\"" << place.before << "\", \"" << place.label << "\", \"" << place.after << "\"}";
}

}  // namespace ulk_test

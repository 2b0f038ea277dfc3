#include "render/shaders/build_program.h"

#include <GL/glew.h>

#include <cstdlib>
#include <iostream>
#include <string>

#include "gltextures/gr_check_error.h"
#include "render/gl/program.h"
#include "render/gl/shader.h"
#include "render/gl/transform_feedback.h"
#include "render/shaders/shaders.h"

namespace ulk3d {

namespace {

void print_log(const std::string& log) {
    if (!log.empty())
        std::cerr << log << std::flush;
}

[[noreturn]] void end_without_program(const char* line, const std::string& log) {
    std::cerr << line << std::endl;
    print_log(log);
    std::exit(EXIT_FAILURE);
}

/// A check clears GL's error, so without an error label there must be no check.
void check_at(const char* mark) {
    if (mark != nullptr)
        libgr::grCheckError(mark);
}

void compile(shader_t& shader, GLenum type, const stage_plan_t& stage, bool prints_log,
             const char* base_directory) {
    if (!compile_source(shader, type, *stage.source, base_directory))
        end_without_program(stage.failure, shader.compile_log());
    if (prints_log)
        print_log(shader.compile_log());
    check_at(stage.mark);
}

void compile_and_attach(const program_plan_t& plan, const program_parts_t& parts,
                        const char* base_directory) {
    compile(parts.vertex, GL_VERTEX_SHADER, plan.vertex, plan.prints_logs, base_directory);
    compile(parts.fragment, GL_FRAGMENT_SHADER, plan.fragment, plan.prints_logs, base_directory);
    static_cast<void>(parts.program.create());  // without a program the link fails, which is reported
    parts.program.attach(parts.vertex);
    parts.program.attach(parts.fragment);
    check_at(plan.attached_mark);
}

void link(const program_plan_t& plan, program_t& program) {
    if (!program.link())
        end_without_program(plan.link_failure, program.link_log());
    if (plan.prints_logs)
        print_log(program.link_log());
}

}  // namespace

void build_program(const program_plan_t& plan, const program_parts_t& parts, const char* base_directory) {
    compile_and_attach(plan, parts, base_directory);
    link(plan, parts.program);
}

bool build_program(const program_plan_t& plan, const program_parts_t& parts,
                   const feedback_plan_t& feedback_plan, transform_feedback_t& feedback,
                   const char* base_directory) {
    compile_and_attach(plan, parts, base_directory);
    if (!feedback.allocate()) {
        std::cerr << feedback_plan.failure << std::endl;
        return false;
    }
    feedback.varyings(parts.program, static_cast<GLsizei>(feedback_plan.varyings.size()),
                      feedback_plan.varyings.data());
    check_at(feedback_plan.mark);
    link(plan, parts.program);
    return true;
}

}  // namespace ulk3d

#pragma once

#include <span>

namespace ulk3d {

class program_t;
class shader_t;
class transform_feedback_t;
struct shader_source_t;

/// How one stage of a program is made.
struct stage_plan_t {
    const shader_source_t* source;
    const char* failure;         ///< the line for a source that does not compile
    const char* mark = nullptr;  ///< of the check for GL errors that follows; null for none
};

/// How a program is made. The logs are GL's, of each stage and of the link.
struct program_plan_t {
    stage_plan_t vertex;
    stage_plan_t fragment;
    const char* link_failure;             ///< the line for stages that do not link
    const char* attached_mark = nullptr;  ///< of the check that follows the attaching; null for none
    bool prints_logs = false;             ///< whether logs are also printed when all is well
};

/// What the outputs of a program's vertices are captured by.
struct feedback_plan_t {
    std::span<const char* const> varyings;
    const char* failure;  ///< the line for a transform feedback object that is not to be had
    const char* mark;     ///< of the check that follows the naming of the varyings
};

/// The objects that a program is made of. They belong to the caller.
struct program_parts_t {
    shader_t& vertex;
    shader_t& fragment;
    program_t& program;
};

/// Compiles both stages, attaches and links them. Files in the working directory or in `base_directory` (null
/// for none; ends with its separator) replace the sources.
///
/// There is no drawing without the program: a source that does not compile, or stages that do not link, end
/// the process with exit status 1. The plan's line and, when not empty, GL's log are printed on the standard
/// error stream first.
void build_program(const program_plan_t& plan, const program_parts_t& parts, const char* base_directory);

/// The same for a program whose outputs are captured: allocates the feedback once the stages are attached,
/// and names the varyings before the link. False, after the line of its plan, when that is not to be had.
[[nodiscard]] bool build_program(const program_plan_t& plan, const program_parts_t& parts,
                                 const feedback_plan_t& feedback_plan, transform_feedback_t& feedback,
                                 const char* base_directory);

}  // namespace ulk3d

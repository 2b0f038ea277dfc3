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
    const char* failure;         ///< the message for a source that does not compile
    const char* mark = nullptr;  ///< error label of the check that follows; null for no check
};

/// How a program is made. The logs are those of GL for each stage and for the link.
struct program_plan_t {
    stage_plan_t vertex;
    stage_plan_t fragment;
    const char* link_failure;             ///< the message for stages that do not link
    const char* attached_mark = nullptr;  ///< error label of the check after attaching; null for no check
    bool prints_logs = false;             ///< whether logs are printed even on success
};

/// How the outputs of a program's vertex stage are captured.
struct feedback_plan_t {
    std::span<const char* const> varyings;
    const char* failure;  ///< the message when GL gives no transform feedback object
    const char* mark;     ///< error label of the check after the varyings are set
};

/// The objects that a program is made of, owned by the caller.
struct program_parts_t {
    shader_t& vertex;
    shader_t& fragment;
    program_t& program;
};

/// Compiles both stages, attaches and links them. A file with the name of a source, in the working directory
/// or else in `base_directory` (null for none; ends with its separator), replaces the built-in source.
///
/// Nothing can be drawn without the program, so a source that does not compile, or stages that do not link,
/// end the process with exit status 1, after the plan's message and, unless it is empty, GL's log on the
/// standard error stream.
void build_program(const program_plan_t& plan, const program_parts_t& parts, const char* base_directory);

/// The same for a program whose outputs are captured: allocates the feedback after attaching the stages, and
/// sets the varyings before linking. False, after the feedback plan's message, when GL gives no transform
/// feedback object.
[[nodiscard]] bool build_program(const program_plan_t& plan, const program_parts_t& parts,
                                 const feedback_plan_t& feedback_plan, transform_feedback_t& feedback,
                                 const char* base_directory);

}  // namespace ulk3d

#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "model/scene.h"

namespace ulk3d {

/// A change of models that is made as a whole or not at all.
///
/// It works on copies of the models. Where it fails, whether by a result or by an exception, the copies are
/// dropped and the models have never been touched; when all of it has worked, `commit` exchanges the
/// contents, which can not fail. A model keeps its address and its history.
class whole_change_t {
  public:
    /// A copy of a model to work on, valid as long as this. Null, after a line on the standard error stream,
    /// when GL has no memory for it. The model must outlive `commit`.
    [[nodiscard]] model_entry_t* copy_of(model_entry_t& model) {
        part_t& part = parts.emplace_back(&model, std::make_unique<model_entry_t>(model.kind));
        return part.copy->copy(model) ? part.copy.get() : nullptr;
    }

    /// Puts the copies in place of the models.
    void commit() noexcept {
        for (const part_t& part : parts)
            part.model->swap(*part.copy);
        parts.clear();
    }

  private:
    struct part_t {
        part_t(model_entry_t* changed, std::unique_ptr<model_entry_t> own)
            : model(changed), copy(std::move(own)) {}
        model_entry_t* model;
        std::unique_ptr<model_entry_t> copy;
    };
    std::vector<part_t> parts;
};

}  // namespace ulk3d

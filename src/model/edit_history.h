#pragma once

#include <cstdint>
#include <list>
#include <vector>

#include "model/math/records.h"

namespace ulk3d {

class modeling_t;

/// The value that an edit replaced in one point. Positions and normals use x, y and z, colours all four.
struct edit_point_t {
    vec3w value;
    std::uint64_t index = 0;
};

/// One edit of one model: the replaced values of one member of the records of one array.
///
/// The points lie in one block, in the order in which they were recorded: a drag walks over all of them at
/// every motion of the mouse, and a model may have a million.
struct edit_t {
    std::vector<edit_point_t> points;
    std::uint64_t array = 0;   ///< index of the model's array
    std::uint64_t member = 0;  ///< which attribute of a record, as an index into the array's element list
};

/// The edits of one model that can be undone and redone. No copy of the model is kept: undo and redo are the
/// same exchange of the recorded values with those in the array, after which the edit holds what the
/// opposite step needs.
///
/// The model passed to each call is the one that this history belongs to. Each call maps the array once and,
/// after unmapping it, calls the model's `elementchanged` for every point that it has written, in order.
/// Points and arrays that the model does not have are silently skipped. A GL context must be current for
/// every operation with a model. The number of edits is not limited.
class edit_history_t {
  public:
    /// Begins an edit: appends one that holds the current values of all selected points, in index order. For
    /// an attribute other than a position, normal or colour the values are zero, and each point prints the
    /// line "element.type (KIND) not handled." on the standard error stream.
    void open(std::uint64_t array, std::uint64_t member, const modeling_t& model);

    /// Appends an edit that was made and recorded elsewhere.
    void push(edit_t edit);

    /// Depth of the last edit's first point, at its recorded position, through the affine `modelview` and
    /// then the projection; 0 when there is no such point.
    float depth(const mtx3w& modelview, const mtx3w& projection) const;

    /// Sets x, y and z of each point of the last edit to the recorded value plus `delta`: a drag is always
    /// measured from its start. Returns whether the edit has any points.
    bool move(modeling_t& model, const pos3& delta);

    /// The same for notches of the wheel: each moves the points by half a unit along -z.
    bool wheel(modeling_t& model, std::int32_t delta);

    /// Ends the last edit. Returns true when x, y or z of one of its points differs (not `f_eq`) from the
    /// recorded value; otherwise the edit has changed nothing and is dropped.
    bool close(const modeling_t& model);

    /// Undoes or redoes the last edit and moves it to the other list. Returns whether the edit has any
    /// points; false when there is no edit. For an attribute other than a position, normal or colour each
    /// point prints the line "element_t::e_type_t (KIND) not handled." on the standard error stream and stays
    /// as it is.
    bool undo(modeling_t& model);
    bool redo(modeling_t& model);

    /// Forgets all edits.
    void clear();

    /// The edits in order; while a gesture lasts, the last of `undo_edits` is the open one.
    const std::list<edit_t>& undo_edits() const { return undos; }
    const std::list<edit_t>& redo_edits() const { return redos; }

  private:
    static bool exchange_last(std::list<edit_t>& from, std::list<edit_t>& to, modeling_t& model);

    std::list<edit_t> undos;
    std::list<edit_t> redos;
};

}  // namespace ulk3d

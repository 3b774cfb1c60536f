#pragma once

#include "editing/pending_edits.h"
#include "editing/reading.h"

namespace editing {

/// Sends the pending edits to the device: collects the marked fields into their points, clamping numbers to
/// the limits of the units in force, writes the points that changed, and unmarks what was written.
///
/// An entry out of range is never refused: it is set to the limit and the user is told. A write that fails
/// ends the pass; it is logged and shown, its fields and those of later points stay marked, and applying
/// again writes them. So does a field that was edited while the others were being written.
void Apply(const Passes& passes, PendingEdits& pending, int display_units);

/// Writes every changed point, in list order, and logs each. False when a write failed, which ends the pass
/// and has been logged and shown.
bool PropagateChanges(const Passes& passes);

/// Throws the unapplied edits away: what the device is known to hold goes back into the points and the marked
/// fields. Nothing is read from the device.
void Cancel(const Passes& passes, PendingEdits& pending);

}  // namespace editing

#pragma once

/// For EXPECT_PRED2, which prints which of the conditions holds.
inline bool Both(bool one, bool other) { return one && other; }
inline bool Implies(bool condition, bool consequence) { return !condition || consequence; }

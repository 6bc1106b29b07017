#pragma once

// Where the machine stands after a process was ended: the evaluator's verdict
// (recovering until the observation window has passed, then recovered,
// noImprovement or insufficientData), or the store's own idle and
// terminationFailed.
enum class DashboardRecoveryState {
    idle,
    recovering,
    recovered,
    noImprovement,
    insufficientData,
    terminationFailed,
};

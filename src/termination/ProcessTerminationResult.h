#pragma once

#include "termination/ProcessTerminationSignal.h"

#include <QString>

#include <variant>

// Why no signal was sent.
enum class ProcessTerminationRejection {
    notCurrentUser,
    selfProcess,
    systemCritical,
    protectedProcess,
    alreadyExited,
    identityChanged,
    executableChanged,
};
QString processTerminationRejectionText(ProcessTerminationRejection rejection);

// The outcome of one `terminate`: a signal sent, refused by the safety check,
// or failed in the kernel. Never retried.
struct ProcessTerminationResult {
    struct SignalSent {
        ProcessTerminationSignal signal = ProcessTerminationSignal::graceful;
        bool operator==(const SignalSent &) const = default;
    };
    struct Rejected {
        ProcessTerminationRejection rejection = ProcessTerminationRejection::alreadyExited;
        bool operator==(const Rejected &) const = default;
    };
    struct SignalFailed {
        int errorNumber = 0;
        bool operator==(const SignalFailed &) const = default;
    };

    std::variant<SignalSent, Rejected, SignalFailed> outcome;

    bool operator==(const ProcessTerminationResult &) const = default;

    static ProcessTerminationResult signalSent(ProcessTerminationSignal signal);
    static ProcessTerminationResult rejected(ProcessTerminationRejection rejection);
    static ProcessTerminationResult signalFailed(int errorNumber);

    bool isSignalSent() const { return std::holds_alternative<SignalSent>(outcome); }
    // The store's message line after the process name and "：".
    QString text() const;
};

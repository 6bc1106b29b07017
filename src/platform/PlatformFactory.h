#pragma once

#include "sampling/SystemMetricSampler.h"
#include "termination/ProcessTerminationController.h"

#include <QString>

#include <memory>

// Where the platform readers look. Tests point these at fixture trees.
struct PlatformRoots {
    QString procRoot = QStringLiteral("/proc");
    QString sysRoot = QStringLiteral("/sys");
};

// The composition root of the machine-facing half: builds the concrete probes
// of this platform behind their interfaces. Implemented once per platform
// (platform/<os>/); nothing else in the program knows which platform it is on.
SystemMetricSampler::Probes makePlatformProbes(const PlatformRoots &roots = {});
std::shared_ptr<SystemMetricSampler> makeSystemMetricSampler(const PlatformRoots &roots = {});

// The termination controller of the running program: this platform's identity
// reader and signal sender, the current user and this process.
ProcessTerminationController makeProcessTerminationController(const PlatformRoots &roots = {});

#pragma once

#include "dashboard/DashboardStore.h"

#include <memory>

// A store with the same made-up half hour behind it on every run, so that
// every page has something to show on a machine without sensors and pictures
// can be compared from one run to the next: a test run that heats the machine,
// a compiler build, a browser, a development server, six heat incidents (one
// of each status) and a process ended a minute ago whose two-minute
// verification is still running.
//
// Monitoring is on (the header shows "监控中"), but its sampler never delivers:
// what the store shows is the script alone. Nothing here touches a real
// process: the termination controller runs on a made-up identity reader and
// a signal sender that only records.
class ScriptedStore {
public:
    ScriptedStore();
    ~ScriptedStore();
    ScriptedStore(const ScriptedStore &) = delete;
    ScriptedStore &operator=(const ScriptedStore &) = delete;

    DashboardStore &store() { return *m_store; }

    // Where the script's clock ends (its newest sample), seconds since 1970.
    static constexpr double endTime = 1795444200.0; // 2026-11-23 14:30:00 UTC
    static constexpr int sampleCount = 900;         // 30 minutes at 2 s

private:
    struct Machine;
    std::shared_ptr<Machine> m_machine;
    std::unique_ptr<DashboardStore> m_store;
};

// A store that has seen nothing yet, with monitoring on: the state of the
// first two seconds after a start.
class EmptyScriptedStore {
public:
    EmptyScriptedStore();
    ~EmptyScriptedStore();
    DashboardStore &store() { return *m_store; }

private:
    struct Gate;
    std::shared_ptr<Gate> m_gate;
    std::unique_ptr<DashboardStore> m_store;
};

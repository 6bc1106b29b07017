#pragma once

#include <QByteArray>

#include <memory>
#include <optional>
#include <vector>

// NVIDIA's management library, opened with dlopen at run time and never
// linked, so the program runs on machines without the driver.
//
// Loading the library touches no GPU. A session (nvmlInit_v2 ... nvmlShutdown)
// does: nvmlInit opens the driver's device nodes and brings up the GPUs'
// driver state, tens to hundreds of milliseconds, and wakes a GPU that the
// kernel had put to sleep. So the session is started only while a GPU is
// awake, kept across ticks while it works (starting one every 2 seconds would
// keep the GPUs from idling), and ended when none is awake any more.
class NvmlLibrary {
public:
    // Absent when the library cannot be opened or lacks one of the five
    // functions. Calls none of them.
    static std::unique_ptr<NvmlLibrary> load(const QByteArray &libraryPath);

    // Ends a running session, then closes the library.
    ~NvmlLibrary();
    NvmlLibrary(const NvmlLibrary &) = delete;
    NvmlLibrary &operator=(const NvmlLibrary &) = delete;

    // Starts a session unless one runs; false when nvmlInit_v2 fails.
    bool startSession();
    // Ends the session, if one runs.
    void endSession();

    // The GPU utilisation of every device in percent, in device order; a
    // device whose handle or rates cannot be read is left out. Absent when
    // no session runs or the device count cannot be read, which means the
    // session broke.
    std::optional<std::vector<double>> utilisations() const;

private:
    struct Functions;
    struct HandleCloser {
        void operator()(void *handle) const;
    };

    NvmlLibrary(std::unique_ptr<void, HandleCloser> handle, std::unique_ptr<Functions> functions);

    std::unique_ptr<void, HandleCloser> m_handle;
    std::unique_ptr<Functions> m_functions;
    bool m_inSession = false;
};

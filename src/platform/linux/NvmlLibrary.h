#pragma once

#include <QByteArray>

#include <memory>
#include <optional>
#include <vector>

// NVIDIA's management library, opened with dlopen at run time and never
// linked, so the program runs on machines without the driver.
//
// An open library holds an NVML session: nvmlInit_v2 at open, nvmlShutdown
// and dlclose at destruction. The session is kept across ticks because
// nvmlInit opens the driver's device nodes and, with persistence mode off,
// brings up the GPUs' driver state: tens to hundreds of milliseconds, far
// more than the rest of a tick, and repeated every 2 seconds it would keep
// the GPUs from idling.
class NvmlLibrary {
public:
    // Absent when the library cannot be opened, lacks one of the five
    // functions, or nvmlInit_v2 fails.
    static std::unique_ptr<NvmlLibrary> open(const QByteArray &libraryPath);

    ~NvmlLibrary();
    NvmlLibrary(const NvmlLibrary &) = delete;
    NvmlLibrary &operator=(const NvmlLibrary &) = delete;

    // The GPU utilisation of every device in percent, in device order; a
    // device whose handle or rates cannot be read is left out. Absent when
    // the device count cannot be read, which means the session broke.
    std::optional<std::vector<double>> utilisations() const;

private:
    struct Functions;
    struct HandleCloser {
        void operator()(void *handle) const;
    };

    NvmlLibrary(std::unique_ptr<void, HandleCloser> handle, std::unique_ptr<Functions> functions);

    std::unique_ptr<void, HandleCloser> m_handle;
    std::unique_ptr<Functions> m_functions;
};

#include "platform/linux/NvmlLibrary.h"

#include <dlfcn.h>

namespace {

// The few NVML types used, as nvml.h declares them.
using NvmlReturn = int; // nvmlReturn_t; NVML_SUCCESS is 0
using NvmlDevice = struct NvmlDeviceOpaque *;
struct NvmlUtilization {
    unsigned int gpu;    // percent of time a kernel ran over the last sample period
    unsigned int memory; // percent of time memory was read or written
};
constexpr NvmlReturn kNvmlSuccess = 0;

} // namespace

struct NvmlLibrary::Functions {
    NvmlReturn (*init)();
    NvmlReturn (*deviceCount)(unsigned int *);
    NvmlReturn (*deviceHandle)(unsigned int, NvmlDevice *);
    NvmlReturn (*utilization)(NvmlDevice, NvmlUtilization *);
    NvmlReturn (*shutdown)();
};

void NvmlLibrary::HandleCloser::operator()(void *handle) const
{
    ::dlclose(handle);
}

std::unique_ptr<NvmlLibrary> NvmlLibrary::load(const QByteArray &libraryPath)
{
    std::unique_ptr<void, HandleCloser> handle(
        ::dlopen(libraryPath.constData(), RTLD_NOW | RTLD_LOCAL));
    if (!handle)
        return nullptr;
    auto symbol = [&](const char *name) { return ::dlsym(handle.get(), name); };
    auto functions = std::make_unique<Functions>();
    // The _v2 entry points are the ones current drivers export under these
    // names; the unversioned ones are kept only for old binaries.
    functions->init = reinterpret_cast<decltype(Functions::init)>(symbol("nvmlInit_v2"));
    functions->deviceCount =
        reinterpret_cast<decltype(Functions::deviceCount)>(symbol("nvmlDeviceGetCount_v2"));
    functions->deviceHandle = reinterpret_cast<decltype(Functions::deviceHandle)>(
        symbol("nvmlDeviceGetHandleByIndex_v2"));
    functions->utilization =
        reinterpret_cast<decltype(Functions::utilization)>(symbol("nvmlDeviceGetUtilizationRates"));
    functions->shutdown = reinterpret_cast<decltype(Functions::shutdown)>(symbol("nvmlShutdown"));
    if (!functions->init || !functions->deviceCount || !functions->deviceHandle ||
        !functions->utilization || !functions->shutdown)
        return nullptr;
    return std::unique_ptr<NvmlLibrary>(new NvmlLibrary(std::move(handle), std::move(functions)));
}

NvmlLibrary::NvmlLibrary(std::unique_ptr<void, HandleCloser> handle,
                         std::unique_ptr<Functions> functions)
    : m_handle(std::move(handle)), m_functions(std::move(functions))
{
}

NvmlLibrary::~NvmlLibrary()
{
    // Ends the session before m_handle closes the library.
    endSession();
}

bool NvmlLibrary::startSession()
{
    if (!m_inSession)
        m_inSession = m_functions->init() == kNvmlSuccess;
    return m_inSession;
}

void NvmlLibrary::endSession()
{
    if (m_inSession)
        m_functions->shutdown();
    m_inSession = false;
}

std::optional<std::vector<double>> NvmlLibrary::utilisations() const
{
    if (!m_inSession)
        return std::nullopt;
    unsigned int count = 0;
    if (m_functions->deviceCount(&count) != kNvmlSuccess)
        return std::nullopt;
    std::vector<double> values;
    for (unsigned int index = 0; index < count; ++index) {
        NvmlDevice device = nullptr;
        NvmlUtilization utilization{};
        if (m_functions->deviceHandle(index, &device) != kNvmlSuccess ||
            m_functions->utilization(device, &utilization) != kNvmlSuccess)
            continue; // e.g. a GPU that fell off the bus; the others still count
        values.push_back(static_cast<double>(utilization.gpu));
    }
    return values;
}

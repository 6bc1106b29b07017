// A stand-in for libnvidia-ml.so.1, built in three variants from this one
// source, so the NVML route runs against something on machines without an
// NVIDIA driver.

extern "C" {

struct nvmlDevice_st {
    unsigned int busyPercent;
};
struct nvmlUtilization_st {
    unsigned int gpu;
    unsigned int memory;
};

// The call counts, read by the tests through dlsym: every call, and init and
// shutdown apart.
int kwFakeNvmlCalls = 0;
int kwFakeNvmlInitCalls = 0;
int kwFakeNvmlShutdownCalls = 0;

namespace {
// Two working devices at 12 % and 37 %, and a third whose handle cannot be had.
nvmlDevice_st devices[] = {{12}, {37}};
constexpr unsigned int kDeviceCount = 3;
} // namespace

int nvmlInit_v2()
{
    ++kwFakeNvmlCalls;
    ++kwFakeNvmlInitCalls;
#ifdef KW_FAKE_NVML_INIT_FAILS
    return 9; // NVML_ERROR_DRIVER_NOT_LOADED
#else
    return 0;
#endif
}

int nvmlShutdown()
{
    ++kwFakeNvmlCalls;
    ++kwFakeNvmlShutdownCalls;
    return 0;
}

int nvmlDeviceGetCount_v2(unsigned int *count)
{
    ++kwFakeNvmlCalls;
    *count = kDeviceCount;
    return 0;
}

int nvmlDeviceGetHandleByIndex_v2(unsigned int index, nvmlDevice_st **device)
{
    ++kwFakeNvmlCalls;
    if (index >= sizeof devices / sizeof devices[0])
        return 15; // NVML_ERROR_GPU_IS_LOST
    *device = &devices[index];
    return 0;
}

#ifndef KW_FAKE_NVML_MISSING_SYMBOL
int nvmlDeviceGetUtilizationRates(nvmlDevice_st *device, nvmlUtilization_st *utilization)
{
    ++kwFakeNvmlCalls;
    utilization->gpu = device->busyPercent;
    utilization->memory = 5;
    return 0;
}
#endif
}

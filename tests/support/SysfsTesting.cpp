#include "support/SysfsTesting.h"

#include "support/Fixtures.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

QString fixtureSys(const char *machine)
{
    return fixturePath(QLatin1String(machine) + QStringLiteral("/sys"));
}

KernelFileReader failingReader(std::vector<QByteArray> endings, int error)
{
    return [endings = std::move(endings), error](const QByteArray &path) {
        for (const QByteArray &ending : endings) {
            if (path.endsWith(ending))
                return FileReadResult{std::nullopt, error};
        }
        return readKernelFile(path);
    };
}

KernelFileReader recordingReader(std::shared_ptr<std::vector<QByteArray>> opened)
{
    return [opened = std::move(opened)](const QByteArray &path) {
        opened->push_back(path);
        return readKernelFile(path);
    };
}

FakeNvmlCounters::FakeNvmlCounters(const char *libraryPath)
    : m_handle(::dlopen(libraryPath, RTLD_NOW | RTLD_LOCAL))
{
    EXPECT_NE(m_handle, nullptr) << ::dlerror();
}

FakeNvmlCounters::~FakeNvmlCounters()
{
    if (m_handle)
        ::dlclose(m_handle);
}

int FakeNvmlCounters::count(const char *counter) const
{
    auto function = m_handle ? reinterpret_cast<int (*)()>(::dlsym(m_handle, counter)) : nullptr;
    return function ? function() : -1;
}

#include "support/SysfsTesting.h"

#include "support/Fixtures.h"

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

#include "platform/DisplayConnection.h"

#include "platform/linux/UniqueFileDescriptor.h"

#include <cstring>
#include <dlfcn.h>
#include <memory>
#include <sys/socket.h>
#include <sys/un.h>

bool isWaylandDisplayReachable(const QByteArray &waylandDisplay, const QByteArray &runtimeDirectory)
{
    if (waylandDisplay.isEmpty())
        return false;
    QByteArray path = waylandDisplay;
    if (!path.startsWith('/')) {
        if (runtimeDirectory.isEmpty())
            return false;
        path = runtimeDirectory + '/' + waylandDisplay;
    }
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path)
        return false;
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    UniqueFileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    return socket.isValid() && ::connect(socket.get(), reinterpret_cast<const sockaddr *>(&address),
                                         sizeof address) == 0;
}

std::shared_ptr<void> connectX11Display(const QByteArray &display)
{
    if (display.isEmpty())
        return nullptr;
    // libxcb is what Qt's X11 platform connects with; loaded here only to ask
    // the same question without linking the program to X11.
    void *library = ::dlopen("libxcb.so.1", RTLD_LAZY | RTLD_LOCAL);
    if (!library)
        return nullptr;
    using Connect = void *(*)(const char *, int *);
    using HasError = int (*)(void *);
    using Disconnect = void (*)(void *);
    const auto connect = reinterpret_cast<Connect>(::dlsym(library, "xcb_connect"));
    const auto hasError = reinterpret_cast<HasError>(::dlsym(library, "xcb_connection_has_error"));
    const auto disconnect = reinterpret_cast<Disconnect>(::dlsym(library, "xcb_disconnect"));
    if (!connect || !hasError || !disconnect) {
        ::dlclose(library);
        return nullptr;
    }
    // xcb_connect never returns null: a failed connection is an error object
    // that still has to be released.
    void *connection = connect(display.constData(), nullptr);
    const bool reachable = connection && hasError(connection) == 0;
    const auto release = [library, disconnect](void *opened) {
        if (opened)
            disconnect(opened);
        ::dlclose(library);
    };
    if (!reachable) {
        release(connection);
        return nullptr;
    }
    return std::shared_ptr<void>(connection, release);
}

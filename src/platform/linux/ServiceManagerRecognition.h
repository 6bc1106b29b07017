#pragma once

#include <string_view>

// Whether a systemd cgroup path is the one a user's own service manager
// (`systemd --user`) runs in: the scope init.scope of the unit
// user@<uid>.service. Grouping treats service managers (this one and pid 1)
// as nobody's parent. Never by name or executable: in a container whose pid 1
// is bash, the user's other bash processes are ordinary parents.
bool isUserServiceManagerCgroup(std::string_view systemdCgroupPath);

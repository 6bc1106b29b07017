// The Linux termination path over real processes that this test starts
// itself (and over fixture trees for the reader's parsing). Nothing here
// signals a process that the test did not fork; what needs another user, a
// seccomp filter or a pid namespace runs in a forked process of its own.

#include "platform/PlatformFactory.h"
#include "platform/linux/PidfdSignalSender.h"
#include "platform/linux/ProcPidStat.h"
#include "platform/linux/ProcfsProcessIdentityReader.h"
#include "sampling/Cancellation.h"
#include "support/Fixtures.h"
#include "support/ShellChild.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fstream>
#include <functional>

#include <fcntl.h>
#include <grp.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <pwd.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Signal = ProcessTerminationSignal;
using Result = ProcessTerminationResult;

// Runs `body` in a forked process of its own and gives back what it
// returned: empty when every check in it held, else its message (one that
// starts with "skip:" when the machine does not allow what it needs). For
// what must not touch the test program: another user, a seccomp filter, a
// pid namespace. The body ends the children it starts. A body that dies
// gives a message naming the signal.
std::string runInForkedProcess(const std::function<std::string()> &body)
{
    int result[2];
    if (::pipe2(result, O_CLOEXEC) != 0)
        return "no pipe";
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::close(result[0]);
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        // A message shorter than the pipe's buffer is written whole.
        const std::string message = body();
        [[maybe_unused]] const ssize_t written = ::write(result[1], message.data(), message.size());
        ::_exit(0);
    }
    ::close(result[1]);
    QFile pipe;
    pipe.open(result[0], QIODevice::ReadOnly, QFile::AutoCloseHandle);
    if (pid < 0)
        return "no fork";
    const std::string message = pipe.readAll().toStdString();
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFSIGNALED(status))
        return "the forked process died of signal " + std::to_string(WTERMSIG(status));
    return message;
}

// A user id that names no account on this machine, from `from` upwards.
uid_t unusedUserID(uid_t from)
{
    uid_t uid = from;
    while (::getpwuid(uid) != nullptr)
        ++uid;
    return uid;
}

// The real controller with a short schedule, for waits that must run to their end.
ProcessTerminationController quickController()
{
    return ProcessTerminationController(std::make_shared<ProcfsProcessIdentityReader>(),
                                        std::make_shared<PidfdSignalSender>(), ::getuid(),
                                        ::getpid(), {0.02, 0.02, 0.02});
}

// The signal that ended `pid`, a child of the test's own, once it has ended
// (waiting up to five seconds); 0 when no signal ended it.
int endingSignal(pid_t pid)
{
    for (int wait = 0; wait < 500 && !hasExited(pid); ++wait)
        ::usleep(10'000);
    siginfo_t info{};
    ::waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOHANG | WNOWAIT);
    return info.si_code == CLD_KILLED ? info.si_status : 0;
}

// What the user would have seen of a process.
ProcessTerminationTarget seen(pid_t pid)
{
    ProcfsProcessIdentityReader reader;
    const std::optional<ProcessTerminationTarget> reading = reader.readIdentity(pid);
    EXPECT_TRUE(reading.has_value());
    return reading.value_or(ProcessTerminationTarget{});
}

void expectForkedBodyHolds(const std::string &message)
{
    if (message.rfind("skip:", 0) == 0)
        GTEST_SKIP() << message;
    EXPECT_EQ(message, "");
}

TEST(ProcfsIdentityReader, ParsesAFixtureTreeAndGivesNothingForWhatIsUnreadable)
{
    ProcfsProcessIdentityReader reader(fixturePath(QStringLiteral("identity-reader/proc")));
    struct stat info {};
    ASSERT_EQ(::stat(fixturePath(QStringLiteral("identity-reader/proc/4242")).toLocal8Bit(), &info),
              0);
    // A replaced binary keeps its " (deleted)", so it counts as another executable.
    const ProcessIdentity identity{
        4242, processStartTime(1700000000, 123456, systemClockTicksPerSecond()),
        QStringLiteral("/opt/tools/bin/my tool (deleted)")};
    EXPECT_EQ(reader.readIdentity(4242),
              (ProcessTerminationTarget{identity, info.st_uid, QStringLiteral("my (odd) tool")}));

    // 4343's stat is cut short, 4444 is a kernel thread (no exe), 4545 has no
    // directory and 4646 is a thread of 4242.
    for (const pid_t pid : {4343, 4444, 4545, 4646, 0, -1})
        EXPECT_FALSE(reader.readIdentity(pid).has_value()) << pid;
    ProcfsProcessIdentityReader noBootTime(
        fixturePath(QStringLiteral("identity-reader/proc-without-btime")));
    EXPECT_FALSE(noBootTime.readIdentity(4242).has_value());
}

// The victim ignores SIGTERM and its binary is deleted once it has been
// signalled: its exe now ends in " (deleted)", which no longer matches what
// the user saw, yet it runs. The wait asks the pinned process, so the forced
// route is offered; the next tick's reading (with the new path) is what the
// forced signal is checked against.
TEST(ProcfsTermination, VictimWhoseBinaryIsDeletedStillRuns)
{
    QTemporaryDir directory;
    ASSERT_TRUE(directory.isValid());
    const QString copy = directory.filePath(QStringLiteral("kw-victim"));
    ASSERT_TRUE(QFile::copy(QStringLiteral("/bin/sleep"), copy));
    ASSERT_TRUE(QFile::setPermissions(copy, QFile::ReadOwner | QFile::ExeOwner));
    ShellChild victim(directory.path().toLocal8Bit(),
                      {"sh", "-c", "trap '' TERM; exec ./kw-victim 60"});
    ASSERT_TRUE(victim.started());
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return seen(victim.pid()).identity.executablePath == copy; }, 5000));
    const ProcessTerminationTarget target = seen(victim.pid());
    const auto controller = quickController();
    Cancellation cancellation;

    ProcessTerminationAttempt graceful = controller.attempt(target, Signal::graceful);
    ASSERT_EQ(graceful.result, Result::signalSent(Signal::graceful));
    ASSERT_TRUE(QFile::remove(copy));
    EXPECT_TRUE(controller.waitForExit(target, cancellation, graceful.pin.get()));
    EXPECT_FALSE(hasExited(victim.pid()));

    const ProcessTerminationTarget nextTick = seen(victim.pid());
    EXPECT_EQ(nextTick.identity.executablePath, copy + QStringLiteral(" (deleted)"));
    ProcessTerminationAttempt forced = controller.attempt(nextTick, Signal::forced);
    EXPECT_EQ(forced.result, Result::signalSent(Signal::forced));
    EXPECT_FALSE(controller.waitForExit(nextTick, cancellation, forced.pin.get()));
}

// A pid namespace of our own, where `ns_last_pid` hands the pid of a process
// that has gone to a new one: the pin taken on the first never reaches the
// second, the check refuses the reused pid, and the wait counts the first as
// gone.
std::string reusePidInPrivateNamespace()
{
    // pid 1 of the namespace, with a /proc of its own in a mount namespace
    // of its own.
    if (::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        ::mount("proc", "/proc", "proc", 0, nullptr) != 0)
        return "skip: no private /proc";
    ProcfsProcessIdentityReader reader;
    PidfdSignalSender sender;
    const auto controller = makeProcessTerminationController();

    auto first = sleepingChild();
    const pid_t pid = first->pid();
    const std::optional<ProcessTerminationTarget> target = reader.readIdentity(pid);
    if (!target)
        return "the first process could not be read";
    const std::unique_ptr<PinnedProcess> pin = sender.pin(pid);
    first.reset(); // killed and reaped
    // Two clock ticks on, so the second process cannot share the first's
    // start time (the identity the check compares).
    ::usleep(useconds_t(2'000'000 / ::sysconf(_SC_CLK_TCK)));

    {
        std::ofstream lastPid("/proc/sys/kernel/ns_last_pid");
        lastPid << pid - 1;
        if (!lastPid.flush())
            return "skip: ns_last_pid cannot be written";
    }
    const auto second = sleepingChild();
    if (second->pid() != pid)
        return "skip: the pid went elsewhere";
    const std::optional<ProcessTerminationTarget> reading = reader.readIdentity(pid);
    if (!reading || reading->identity.startTime == target->identity.startTime)
        return "skip: both processes started within one clock tick";

    std::string failures;
    if (pin->send(Signal::graceful) != ESRCH)
        failures += "the pin reached the pid's new process; ";
    if (pin->isRunning() != false)
        failures += "the pin says its process still runs; ";
    if (controller.terminate(*target, Signal::graceful) !=
        Result::rejected(ProcessTerminationRejection::identityChanged))
        failures += "the reused pid was not refused; ";
    Cancellation cancellation;
    if (controller.waitForExit(*target, cancellation))
        failures += "the reused pid counts as running; ";
    if (hasExited(pid))
        failures += "the new process was signalled; ";
    return failures;
}

TEST(ProcfsTermination, ReusedPidInAPrivateNamespaceIsNeverSignalled)
{
    expectForkedBodyHolds(runInForkedProcess([]() -> std::string {
        if (::unshare(CLONE_NEWPID | CLONE_NEWNS) != 0)
            return "skip: no private pid namespace";
        // The next child is the namespace's pid 1.
        return runInForkedProcess(reusePidInPrivateNamespace);
    }));
}

// A seccomp profile that answers pidfd_open with `error`, in a forked process
// that starts its own victim.
std::string terminateUnderSeccomp(int error, bool expectSignal)
{
    const auto victim = sleepingChild();
    const ProcessTerminationTarget target = seen(victim->pid());
    constexpr int pidfdOpen = 434; // the same number on every architecture
    sock_filter filter[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, pidfdOpen, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | (static_cast<unsigned>(error) & 0xffff)),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    sock_fprog program{static_cast<unsigned short>(std::size(filter)), filter};
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
        ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
        return "skip: no seccomp filter";

    const Result result = makeProcessTerminationController().terminate(target, Signal::graceful);
    if (!expectSignal) {
        if (result != Result::signalFailed(error))
            return "a refused pidfd_open did not fail closed";
        return hasExited(victim->pid()) ? "the victim was signalled anyway" : "";
    }
    if (result != Result::signalSent(Signal::graceful))
        return "a kernel without pidfd did not fall back to kill";
    return endingSignal(victim->pid()) == SIGTERM ? "" : "the victim did not end";
}

TEST(ProcfsTermination, RefusedPidfdFailsClosedAndOnlyAMissingOneFallsBackToKill)
{
    expectForkedBodyHolds(runInForkedProcess([] { return terminateUnderSeccomp(EPERM, false); }));
    expectForkedBodyHolds(runInForkedProcess([] { return terminateUnderSeccomp(ENOSYS, true); }));
}

// Run as root, the test makes two throwaway users: one owns the victim, the
// other runs the controller. The second cannot read the victim's exe, but
// the owner is still read, so the check says whose process it is.
TEST(ProcfsTermination, AnotherUsersProcessIsNotCurrentUserAlsoWithoutRoot)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "making other users' processes needs root";
    const uid_t owner = unusedUserID(61000);
    const uid_t controllerUser = unusedUserID(owner + 1);
    const auto victim = sleepingChild(owner);
    ASSERT_TRUE(victim->started());
    ProcessTerminationTarget target = seen(victim->pid());
    ASSERT_EQ(target.userID, owner);
    // A record that claims the controller's user, as a stale one could.
    target.userID = controllerUser;

    expectForkedBodyHolds(runInForkedProcess([&]() -> std::string {
        if (::setgroups(0, nullptr) != 0 || ::setgid(controllerUser) != 0 ||
            ::setuid(controllerUser) != 0)
            return "skip: cannot become a throwaway user";
        const std::optional<ProcessTerminationTarget> reading =
            ProcfsProcessIdentityReader().readIdentity(victim->pid());
        if (!reading || reading->userID != owner || !reading->identity.executablePath.isEmpty())
            return "the owner was not read without the exe";
        if (makeProcessTerminationController().terminate(target, Signal::forced) !=
            Result::rejected(ProcessTerminationRejection::notCurrentUser))
            return "another user's process was not refused for its owner";
        return "";
    }));
    EXPECT_FALSE(hasExited(victim->pid()));
}

} // namespace

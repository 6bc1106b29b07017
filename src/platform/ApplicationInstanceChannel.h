#pragma once

#include <QObject>
#include <QString>

#include <memory>

// One running program per user: the first start listens on a local socket in
// the user's runtime directory; a later start finds it, asks it to show its
// window, and exits. A socket file left by a run that crashed refuses every
// connection and is replaced; a socket that accepts one is a running program,
// whatever happens after the connection.
//
// The hand-over: the newcomer sends "show\n" and waits a short while for the
// running side's "ok\n"; the running side reads the request before it answers
// and closes, so the request is never cut off by an early close.
class ApplicationInstanceChannel final : public QObject {
    Q_OBJECT

public:
    enum class Claim {
        primary,   // this process is the running instance and now listens
        forwarded, // another instance runs and was asked to show its window
        alone,     // neither was possible (no writable runtime directory): run alone
        untrusted, // the socket or its directory belongs to someone else: do not run
    };

    explicit ApplicationInstanceChannel(QString socketPath, QObject *parent = nullptr);
    ~ApplicationInstanceChannel() override;

    // Before connecting, the socket file must be a socket of this user that nobody
    // else may write to, in a directory of this user or root that others
    // cannot write to (or that is sticky, as /tmp is); after connecting, the
    // listening process must run as this user. Anything else is `untrusted`
    // and is neither connected to nor removed.
    Claim claim();
    const QString &socketPath() const { return m_socketPath; }

    // $XDG_RUNTIME_DIR/kilnwarden.socket, else a per-uid name in /tmp.
    static QString defaultSocketPath();

signals:
    // Another start of the program asked this one to show its window.
    void showRequested();

private:
    struct Listener;
    void acceptConnections();
    QString m_socketPath;
    std::unique_ptr<Listener> m_listener;
};

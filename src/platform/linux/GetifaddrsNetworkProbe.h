#pragma once

#include "platform/linux/SysfsDirectory.h"
#include "probes/NetworkIORate.h"
#include "sampling/Probing.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

// One record of the interface address list, as getifaddrs gives it.
struct InterfaceAddress {
    QByteArray name;
    std::uint32_t flags = 0;
    int family = 0; // AF_UNSPEC when the record has no address

    bool operator==(const InterfaceAddress &) const = default;
};

// The machine's interface address list; tests stand in made-up lists.
class InterfaceAddressListing {
public:
    virtual ~InterfaceAddressListing() = default;
    // Absent when the list cannot be read.
    virtual std::optional<std::vector<InterfaceAddress>> list() = 0;
};

// getifaddrs, with the list freed on every way out.
class GetifaddrsListing final : public InterfaceAddressListing {
public:
    std::optional<std::vector<InterfaceAddress>> list() override;
};

// The interface records of the shared rate algorithm: for each AF_PACKET
// record, the 64-bit byte counters of <sysRoot>/class/net/<name>/statistics/
// {rx,tx}_bytes. The 32-bit counters in getifaddrs' ifa_data wrap at 4 GiB,
// every few seconds on a fast link. Counters that cannot be read leave the
// record without counters, so it does not count.
std::vector<NetworkInterfaceRecord>
networkInterfaceRecords(const std::vector<InterfaceAddress> &addresses, const QByteArray &sysRoot,
                        const KernelFileReader &read);

// Received and sent rates over all live non-loopback interfaces.
class GetifaddrsNetworkProbe final : public NetworkIOProbing {
public:
    explicit GetifaddrsNetworkProbe(
        QString sysRoot = QStringLiteral("/sys"),
        std::unique_ptr<InterfaceAddressListing> listing = std::make_unique<GetifaddrsListing>(),
        KernelFileReader reader = systemFileReader());
    SensorReading<NetworkThroughput> sample(TimePoint now) override;

private:
    QByteArray m_sysRoot;
    std::unique_ptr<InterfaceAddressListing> m_listing;
    KernelFileReader m_read;
    NetworkIORateTracker m_tracker;
};

#include "platform/linux/GetifaddrsNetworkProbe.h"

#include <ifaddrs.h>
#include <sys/socket.h>

std::optional<std::vector<InterfaceAddress>> GetifaddrsListing::list()
{
    ifaddrs *head = nullptr;
    if (::getifaddrs(&head) != 0)
        return std::nullopt;
    const std::unique_ptr<ifaddrs, void (*)(ifaddrs *)> owner(head, &::freeifaddrs);
    std::vector<InterfaceAddress> addresses;
    for (const ifaddrs *record = head; record; record = record->ifa_next) {
        addresses.push_back({QByteArray(record->ifa_name ? record->ifa_name : ""),
                             static_cast<std::uint32_t>(record->ifa_flags),
                             record->ifa_addr ? record->ifa_addr->sa_family : AF_UNSPEC});
    }
    return addresses;
}

std::vector<NetworkInterfaceRecord>
networkInterfaceRecords(const std::vector<InterfaceAddress> &addresses, const QByteArray &sysRoot,
                        const KernelFileReader &read)
{
    std::vector<NetworkInterfaceRecord> records;
    records.reserve(addresses.size());
    for (const InterfaceAddress &address : addresses) {
        NetworkInterfaceRecord record{QString::fromUtf8(address.name), address.flags,
                                      address.family, std::nullopt};
        // Only the link-level record of an interface can count, so only it
        // costs the two reads. A name that could leave the directory is not
        // an interface name.
        if (address.family == AF_PACKET && !address.name.isEmpty() && !address.name.contains('/') &&
            address.name != "." && address.name != "..") {
            const QByteArray statistics = sysRoot + "/class/net/" + address.name + "/statistics/";
            const FileReadResult received = read(statistics + "rx_bytes");
            const FileReadResult sent = read(statistics + "tx_bytes");
            const auto receivedBytes =
                received.bytes ? parseUnsignedDecimal(asView(*received.bytes)) : std::nullopt;
            const auto sentBytes =
                sent.bytes ? parseUnsignedDecimal(asView(*sent.bytes)) : std::nullopt;
            if (receivedBytes && sentBytes)
                record.counters = NetworkCounters{*receivedBytes, *sentBytes};
        }
        records.push_back(std::move(record));
    }
    return records;
}

GetifaddrsNetworkProbe::GetifaddrsNetworkProbe(QString sysRoot,
                                               std::unique_ptr<InterfaceAddressListing> listing,
                                               KernelFileReader reader)
    : m_sysRoot(sysRoot.toLocal8Bit()), m_listing(std::move(listing)), m_read(std::move(reader)),
      m_tracker(AF_PACKET, QStringLiteral("getifaddrs"))
{
}

SensorReading<NetworkThroughput> GetifaddrsNetworkProbe::sample(TimePoint now)
{
    const std::optional<std::vector<InterfaceAddress>> addresses = m_listing->list();
    std::optional<std::vector<NetworkInterfaceRecord>> records;
    if (addresses)
        records = networkInterfaceRecords(*addresses, m_sysRoot, m_read);
    return m_tracker.update(records, now);
}

#include "clock/transport_feed.h"

#include <map>
#include <optional>
#include <set>
#include <string>

#include "clock/file_pieces.h"

namespace bundle {

namespace {

constexpr std::size_t kPacket = 188;
constexpr std::size_t kMostPackets = 2048;  ///< that are read at once
constexpr char kSync = 0x47;

unsigned at(std::string_view bytes, std::size_t place) {
    return place < bytes.size() ? static_cast<unsigned char>(bytes[place]) : 0;
}

int two(std::string_view bytes, std::size_t place, unsigned mask) {
    return static_cast<int>((at(bytes, place) << 8 | at(bytes, place + 1)) & mask);
}

enum Table { kPrograms = 0, kStreams = 2 };

/// The section of a table in force that begins in a packet, without its checksum (ISO/IEC 13818-1,
/// 2.4.4); empty when none does.
std::string_view section_in(std::string_view packet, Table table) {
    constexpr std::size_t kChecksum = 4;
    const bool begins = (at(packet, 1) & 0x40) != 0 && (at(packet, 3) & 0x10) != 0;
    const std::size_t head = 4 + ((at(packet, 3) & 0x20) != 0 ? at(packet, 4) + 1 : 0);
    const std::size_t place = head + 1 + at(packet, head);
    if (!begins || place >= packet.size()) {
        return {};
    }
    const std::string_view section = packet.substr(place);
    if (at(section, 0) != table || (at(section, 5) & 1) == 0) {
        return {};
    }
    const auto length = static_cast<std::size_t>(two(section, 1, 0xFFF)) + 3;
    return section.substr(0, length > kChecksum ? length - kChecksum : 0);
}

/// The streams with the tables of programmes, by a Program Association Table (2.4.4.3).
std::set<int> programme_tables(std::string_view section) {
    std::set<int> pids;
    for (std::size_t entry = 8; entry + 4 <= section.size(); entry += 4) {
        if (two(section, entry, 0xFFFF) != 0) {
            pids.insert(two(section, entry + 2, 0x1FFF));
        }
    }
    return pids;
}

/// The streams of a programme, by a Program Map Table (2.4.4.8).
std::set<int> streams(std::string_view section) {
    std::set<int> pids;
    std::size_t entry = 12 + static_cast<std::size_t>(two(section, 10, 0xFFF));
    while (entry + 5 <= section.size()) {
        pids.insert(two(section, entry + 1, 0x1FFF));
        entry += 5 + static_cast<std::size_t>(two(section, entry + 3, 0xFFF));
    }
    return pids;
}

/// A packet that begins a frame of a stream, without any of its content.
std::string empty_frame(int pid, std::size_t size) {
    constexpr std::string_view kHead{"\0\0\1\xE0\0\0\x80\0\0", 9};
    constexpr char kDiscontinuity = '\x80';
    const std::size_t stuffing = kPacket - 6 - kHead.size();
    std::string packet{kSync, static_cast<char>(0x40 | pid >> 8), static_cast<char>(pid & 0xFF),
                       0x30,  static_cast<char>(stuffing + 1),    kDiscontinuity};
    packet.append(stuffing, '\xFF').append(kHead);
    packet.resize(size, '\0');
    return packet;
}

/// Goes through an open file.
class Walk {
  public:
    Walk(int file, PacketLayout layout, const ByteSink& sink)
        : file_(file), layout_(layout), sink_(sink) {}

    void run() {
        auto place = static_cast<std::int64_t>(layout_.start);
        is_going_ = sink_(read_piece(file_, 0, place));
        const auto most = static_cast<std::int64_t>(layout_.size * kMostPackets);
        while (is_going_) {
            const std::string bytes = read_piece(file_, place, most);
            const std::size_t used = step(bytes);
            place += static_cast<std::int64_t>(used);
            if (used == 0) {
                sink_(bytes);
                break;
            }
        }
    }

  private:
    /// Hands on what there is of whole packets; how much that is.
    std::size_t step(std::string_view bytes) {
        std::size_t sent = 0;
        std::size_t place = 0;
        while (place + layout_.size <= bytes.size()) {
            const bool is_packet = bytes[place] == kSync;
            const std::string ends = is_packet ? ends_before(bytes.substr(place, kPacket)) : "";
            if (!ends.empty()) {
                is_going_ = is_going_ && sink_(bytes.substr(sent, place - sent)) && sink_(ends);
                sent = place;
            }
            place += is_packet ? layout_.size : 1;
        }
        is_going_ = is_going_ && sink_(bytes.substr(sent, place - sent));
        return place;
    }

    /// What ends the streams that are no longer in the programme whose table the packet holds.
    std::string ends_before(std::string_view packet) {
        const int pid = packet_id(packet);
        if (pid == 0) {
            tables_.merge(programme_tables(section_in(packet, kPrograms)));
        }
        if (!tables_.contains(pid)) {
            return "";
        }
        const std::string_view section = section_in(packet, kStreams);
        const std::set<int> present = streams(section);
        return present.empty() ? "" : change(streams_[two(section, 3, 0xFFFF)], present);
    }

    std::string change(std::set<int>& before, const std::set<int>& present) const {
        std::string ends;
        for (const int pid : before) {
            if (!present.contains(pid)) {
                ends += empty_frame(pid, layout_.size);
            }
        }
        before = present;
        return ends;
    }

    int file_;
    PacketLayout layout_;
    const ByteSink& sink_;
    bool is_going_ = true;
    std::set<int> tables_;                  ///< the streams with the tables of programmes
    std::map<int, std::set<int>> streams_;  ///< of each programme
};

}  // namespace

void hand_on_transport(int file, const ByteSink& sink) {
    const std::string head = read_piece(file, 0, kTransportHead);
    const auto layout = packet_layout(head);
    Walk(file, layout.value_or(PacketLayout{0, kPacket}), sink).run();
}

}  // namespace bundle

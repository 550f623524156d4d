#include "ApplicationFiles.h"
#include "Effects.h"
#include "Tables.h"

#include <algorithm>
#include <memory>

namespace sample {

namespace {

constexpr std::uint8_t BLOCKS_TABLE_ID = 0x3C;
constexpr unsigned SERVER_INITIATE = 0x1006;
constexpr unsigned INFO_INDICATION = 0x1002;

constexpr std::uint16_t GINGA_NCL = 0x0009;
constexpr std::uint8_t PRESENT = 2;
constexpr std::uint8_t KILL = 4;

constexpr std::uint8_t FOREIGN_LABEL = 9;
constexpr std::uint8_t FOREIGN_TAG = 0x41;
constexpr std::uint16_t FOREIGN_SERVICE = HD_SERVICE_ID + 1;
constexpr std::uint8_t HIGHER_PROFILE = 9;
constexpr std::uint16_t FOREIGN_EVENT = 8;
constexpr std::uint8_t FOREIGN_KEY = 0x63;
constexpr std::uint8_t FOREIGN_ID = 0x63;

constexpr unsigned GATEWAY_MODULE = 1;
constexpr unsigned DOCUMENT_MODULE = 3;

/// How many times longer than they should the blocks take to come round.
constexpr unsigned SLOWNESS = 100;

// where fields stand in a section
constexpr std::size_t EXTENSION = 3;
constexpr std::size_t MESSAGE_ID = 10;
constexpr std::size_t TRANSACTION_ID = 12;
constexpr std::size_t MESSAGE_LENGTH = 18;
constexpr std::size_t DDB_MODULE_ID = 20;
constexpr std::size_t DDB_BLOCK_NUMBER = 24;
constexpr std::size_t DDB_DATA = 26;
constexpr std::size_t DII_MODULES = 38;
constexpr std::size_t DII_FIRST_MODULE = 40;
constexpr std::size_t MODULE_VERSION = 6;
constexpr std::size_t MODULE_INFO_LENGTH = 7;

unsigned number(const Bytes& bytes, std::size_t at) {
    return static_cast<unsigned>(bytes[at]) << 8U | bytes[at + 1];
}

void setNumber(Bytes& bytes, std::size_t at, unsigned value) {
    bytes[at] = static_cast<std::uint8_t>(value >> 8U);
    bytes[at + 1] = static_cast<std::uint8_t>(value);
}

bool isBlock(const Bytes& section) {
    return section[0] == BLOCKS_TABLE_ID;
}

bool isMessage(const Bytes& section, unsigned messageId) {
    return !isBlock(section) && number(section, MESSAGE_ID) == messageId;
}

/// An effect on a message of the carousel: its DSI or DII.
template <class Change> auto inMessage(unsigned messageId, Change change) {
    return sections(CAROUSEL_PID, [messageId, change](const Moment&, Bytes& section) {
        if (isMessage(section, messageId)) {
            change(section);
        }
    });
}

/// An effect on a block of the carousel.
template <class Change> auto inBlock(unsigned module, unsigned block, Change change) {
    return sections(CAROUSEL_PID, [module, block, change](const Moment&, Bytes& section) {
        if (isBlock(section) && number(section, DDB_MODULE_ID) == module &&
            number(section, DDB_BLOCK_NUMBER) == block) {
            change(section);
        }
    });
}

void drop(Bytes& section) {
    section.clear();
}

void damageData(Bytes& section) {
    section[DDB_DATA + 8] ^= 0xFFU;
}

/// The next version of a message.
void renew(Bytes& section) {
    setNumber(section, TRANSACTION_ID, number(section, TRANSACTION_ID) + 1);
    section[TRANSACTION_ID + 3] ^= 0x01U;
    setNumber(section, EXTENSION, number(section, TRANSACTION_ID + 2));
}

/// The first module is the gateway's.
void dropGatewayModule(Bytes& section) {
    renew(section);
    const unsigned size = MODULE_INFO_LENGTH + 1U + section[DII_FIRST_MODULE + MODULE_INFO_LENGTH];
    const auto first = section.begin() + DII_FIRST_MODULE;
    section.erase(first, first + size);
    setNumber(section, DII_MODULES, number(section, DII_MODULES) - 1);
    setNumber(section, MESSAGE_LENGTH, number(section, MESSAGE_LENGTH) - size);
    setNumber(section, 1, number(section, 1) - size);
}

/// Where the DSI says that the gateway is: carouselId, moduleId and objectKey, behind a tag and a length.
std::size_t gatewayLocation(const Bytes& section) {
    constexpr std::string_view OBJECT_LOCATION = "ISOP";
    const auto at = std::search(section.begin(), section.end(), OBJECT_LOCATION.begin(), OBJECT_LOCATION.end());
    return static_cast<std::size_t>(at - section.begin()) + OBJECT_LOCATION.size() + 1;
}

using ChangeCarousel = std::function<void(std::vector<CarouselEntry>&, CarouselPlan&)>;

/// The sections of a carousel, one after the other.
class Player {
public:
    explicit Player(CarouselWriter carousel) : m_carousel(std::move(carousel)) {}

    Bytes next(bool ofBlock) {
        const std::vector<Bytes>& all = ofBlock ? m_carousel.blocks() : m_carousel.announcements();
        std::size_t& at = ofBlock ? m_block : m_announcement;
        return all[at++ % all.size()];
    }

private:
    CarouselWriter m_carousel;
    std::size_t m_block = 0;
    std::size_t m_announcement = 0;
};

CarouselWriter changed(const ChangeCarousel& change) {
    std::vector<CarouselEntry> entries = applicationFiles();
    CarouselPlan plan = applicationPlan();
    CarouselWriter carousel(plan, entries);
    change(entries, plan);
    carousel.update(entries, plan);
    return carousel;
}

/// Sends another carousel in the place of the one that is there, as its next version. It is made when it is needed.
auto otherCarousel(ChangeCarousel change) {
    return sections(CAROUSEL_PID, [change = std::move(change),
                                   player = std::shared_ptr<Player>()](const Moment&, Bytes& section) mutable {
        if (player == nullptr) {
            player = std::make_shared<Player>(changed(change));
        }
        section = player->next(isBlock(section));
    });
}

auto without(const std::string& path) {
    return otherCarousel([path](std::vector<CarouselEntry>& entries, CarouselPlan&) {
        entries.erase(std::remove_if(entries.begin(), entries.end(),
                                     [&path](const CarouselEntry& each) { return each.path.find(path) == 0; }),
                      entries.end());
    });
}

/// @param from how the paths begin that begin otherwise
auto renamed(const std::string& from, const std::string& to) {
    return otherCarousel([from, to](std::vector<CarouselEntry>& entries, CarouselPlan& plan) {
        const auto rename = [&from, &to](std::string& path) {
            if (path.find(from) == 0) {
                path.replace(0, from.size(), to);
            }
        };
        for (CarouselEntry& each : entries) {
            rename(each.path);
        }
        for (CarouselPart& each : plan.parts) {
            rename(each.path);
        }
    });
}

/// The directories compressed, in bytes that do not inflate.
auto gatewayThatDoesNotInflate() {
    return [replace = otherCarousel([](std::vector<CarouselEntry>&, CarouselPlan& plan) { plan.compressed = true; }),
            damage = inBlock(GATEWAY_MODULE, 0, damageData)](const Moment& moment, std::uint16_t pid,
                                                             Bytes& section) mutable {
        replace(moment, pid, section);
        damage(moment, pid, section);
    };
}

/// The blocks are those of the carousel, so that each of them comes in the end.
auto slowBlocks() {
    return sections(CAROUSEL_PID, [slow = otherCarousel([](std::vector<CarouselEntry>&, CarouselPlan&) {}),
                                   due = every(SLOWNESS)](const Moment& moment, Bytes& section) mutable {
        if (isBlock(section)) {
            if (due()) {
                slow(moment, CAROUSEL_PID, section);
            } else {
                section.clear();
            }
        }
    });
}

/// The applications are announced otherwise, in the next version of their tables.
auto announced(Signalling signalling) {
    signalling.version = 1;
    return sections(AIT_PID, [signalling](const Moment&, Bytes& section) {
        section = psi_get_tableidext(section.data()) == GINGA_NCL ? nclAit(signalling) : javaAit(signalling);
    });
}

template <class Value> Signalling with(Value Signalling::*field, std::uint16_t value) {
    Signalling signalling;
    signalling.*field = static_cast<std::uint8_t>(value);
    return signalling;
}

Fault fault(const std::string& name, const std::string& help) {
    Fault made{"app-" + name, "", help};
    made.begins = 0;
    return made;
}

std::vector<Fault> announcementFaults() {
    Signalling elsewhere;
    elsewhere.service = FOREIGN_SERVICE;
    return {
        inSections(fault("no-pmt", "no PMT of the service comes"), stop(HD_PMT_PID)),
        inSections(fault("no-ait", "no AIT comes"), stop(AIT_PID)),
        inSections(fault("ait-crc", "the CRC_32 of every AIT is wrong"), damage(AIT_PID, 1)),
        inSections(fault("ait-flaps", "every other time, the AITs have another version"), flap(AIT_PID, 2)),
        inSections(fault("present", "the guide's control code is PRESENT"),
                   announced(with(&Signalling::controlCode, PRESENT))),
        inSections(fault("kill", "the applications' control code is KILL"),
                   announced(with(&Signalling::controlCode, KILL))),
        inSections(fault("profile", "the applications need a higher version of their profiles than receivers have"),
                   announced(with(&Signalling::profileVersion, HIGHER_PROFILE))),
        inSections(fault("no-label", "the applications name a transport protocol that nothing describes"),
                   announced(with(&Signalling::label, FOREIGN_LABEL))),
        inSections(fault("other-service", "the carousel is announced as another service's"), announced(elsewhere)),
        inSections(fault("no-tag", "the carousel is announced with a component_tag that the PMT does not have"),
                   announced(with(&Signalling::componentTag, FOREIGN_TAG))),
    };
}

std::vector<Fault> carouselFaults() {
    return {
        inPackets(fault("no-packets", "the PID of the carousel has no packets"), silence(CAROUSEL_PID)),
        inPackets(fault("scrambled", "the packets of the carousel are scrambled"), scramble(CAROUSEL_PID)),
        inSections(fault("crc", "the CRC_32 of every section of the carousel is wrong"), damage(CAROUSEL_PID, 1)),
        inSections(fault("no-dsi", "the carousel has no DSI"), inMessage(SERVER_INITIATE, drop)),
        inSections(fault("no-dii", "the carousel has no DII"), inMessage(INFO_INDICATION, drop)),
        inSections(fault("other-dii", "the DII has another identification than references have"),
                   inMessage(INFO_INDICATION,
                             [](Bytes& section) {
                                 renew(section);
                                 section[TRANSACTION_ID + 3] ^= 0x10U;
                                 setNumber(section, EXTENSION, number(section, TRANSACTION_ID + 2));
                             })),
        inSections(fault("other-id", "the PMT has another carousel_id than the carousel"),
                   otherCarousel([](std::vector<CarouselEntry>&, CarouselPlan& plan) { plan.id = FOREIGN_ID; })),
        inSections(fault("other-carousel", "the DSI says that the service gateway is in another carousel"),
                   inMessage(SERVER_INITIATE,
                             [](Bytes& section) {
                                 renew(section);
                                 section[gatewayLocation(section) + 3] = FOREIGN_ID;
                             })),
        inSections(fault("slow", "the blocks take longer to come round than most recordings last"), slowBlocks()),
    };
}

std::vector<Fault> moduleFaults() {
    return {
        inSections(fault("gateway-unannounced", "the DII does not announce the service gateway's module"),
                   inMessage(INFO_INDICATION, dropGatewayModule)),
        inSections(fault("gateway-block", "a block of the service gateway's module does not come"),
                   inBlock(GATEWAY_MODULE, 1, drop)),
        inSections(
            fault("gateway-version", "the service gateway's module is announced in a version that does not come"),
            inMessage(INFO_INDICATION,
                      [](Bytes& section) {
                          renew(section);
                          ++section[DII_FIRST_MODULE + MODULE_VERSION];
                      })),
        inSections(fault("gateway-inflate", "the service gateway's module does not inflate"),
                   gatewayThatDoesNotInflate()),
        inSections(fault("no-gateway", "the service gateway's module does not have it"),
                   inMessage(SERVER_INITIATE,
                             [](Bytes& section) {
                                 renew(section);
                                 section[gatewayLocation(section) + 12] = FOREIGN_KEY;
                             })),
        inSections(fault("block", "a block of the module with the guide's document does not come"),
                   inBlock(DOCUMENT_MODULE, 1, drop)),
        inSections(fault("inflate", "the module with the guide's document does not inflate"),
                   inBlock(DOCUMENT_MODULE, 0, damageData)),
    };
}

std::vector<Fault> fileFaults() {
    return {
        inSections(fault("no-base", "the guide's base directory does not exist"), renamed("guia/", "programas/")),
        inSections(fault("no-document", "the guide's initial document does not exist"), without("guia/principal.ncl")),
        inSections(fault("document-case", "the name of the guide's initial document has a capital letter more"),
                   renamed("guia/principal.ncl", "guia/Principal.ncl")),
        inSections(fault("no-class", "the poll's initial class does not exist"),
                   without("enquete/example/mareacu/enquete/EnqueteXlet.class")),
        inSections(fault("no-class-path", "an entry of the poll's class path does not exist"),
                   without("enquete/lib/grafico.jar")),
        inSections(fault("no-icon", "the applications' icons do not exist"), without("icones/")),
        inSections(fault("no-prefetch", "no module has a label that is to be prefetched"),
                   otherCarousel([](std::vector<CarouselEntry>&, CarouselPlan& plan) { plan.parts[0].label = ""; })),
        inSections(fault("no-event", "no section has the event of the stream event object"),
                   sections(EVENTS_PID, [](const Moment&, Bytes& section) { section = streamEvents(FOREIGN_EVENT); })),
        inSections(fault("no-events", "the stream of the stream event object has no sections"), stop(EVENTS_PID)),
    };
}

} // namespace

std::vector<Fault> applicationFaults() {
    std::vector<Fault> all;
    for (std::vector<Fault> each : {announcementFaults(), carouselFaults(), moduleFaults(), fileFaults()}) {
        std::move(each.begin(), each.end(), std::back_inserter(all));
    }
    return all;
}

} // namespace sample

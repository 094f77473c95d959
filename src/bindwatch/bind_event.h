/* What the kernel tells of the attempts to listen: one record for each. Plain C, since the program
 * that runs in the kernel writes it and the others read it, byte for byte: in the ring buffer and
 * on the socket alike, in the machine's byte order.
 *
 * Ports are in host byte order, addresses in network byte order (IPv4 in the first four bytes).
 * Process ids are those of the machine, whatever a container calls them. Times are nanoseconds
 * since the machine was started, its sleep included. */
#pragma once

#ifdef __cplusplus
#include <cstdint>

namespace zenlot {
using std::int32_t;
using std::uint16_t;
using std::uint32_t;
using std::uint64_t;
using std::uint8_t;
#else
#include <linux/types.h>

typedef __u8 uint8_t;
typedef __u16 uint16_t;
typedef __u32 uint32_t;
typedef __s32 int32_t;
typedef __u64 uint64_t;
#endif

enum BindKind {
    ZENLOT_BIND_REFUSED = 1,   /* bind() failed; `error` says why */
    ZENLOT_LISTEN_REFUSED = 2, /* listen() failed on an address that could be bound */
    ZENLOT_BOUND = 3,          /* bind() gave a port; most listen on it next */
    ZENLOT_LISTENING = 4,
    ZENLOT_LISTENER_ENDED = 5, /* told of whoever closed it */
    ZENLOT_PROCESS_ENDED = 6,  /* of one that was refused before; `error` is its wait status */
};

enum BindFlag {
    ZENLOT_V6_ONLY = 1,       /* the socket leaves IPv4 to others */
    ZENLOT_KERNEL_CHOSEN = 2, /* any port was asked for */
};

enum { ZENLOT_COMMAND_LENGTH = 16, ZENLOT_ADDRESS_LENGTH = 16 };

struct BindEvent {
    uint64_t happened_at;
    uint64_t process_started_at;
    uint64_t control_group;
    uint64_t network_cookie; /* 0 where the kernel has none (before 5.12) */
    uint32_t network_inode;  /* what /proc/PID/ns/net is called; given to others later */
    uint32_t process;
    uint32_t thread;
    uint32_t parent;
    uint32_t user; /* who gets to know; the one who runs the process, or who made the listener */
    int32_t error;
    uint16_t port;
    uint16_t reserved;
    uint8_t kind;
    uint8_t family; /* 4 or 6; 0 where there is no address */
    uint8_t flags;
    uint8_t reserved_too;
    uint8_t address[ZENLOT_ADDRESS_LENGTH];
    char command[ZENLOT_COMMAND_LENGTH]; /* of the process; ends with a zero */
};

/* What is shared between the program in the kernel and who loads it. */
enum { ZENLOT_BUDGET_PER_TENTH = 256 };

struct UserBudget {
    uint64_t tenth; /* the tenth of a second that `spent` is about */
    uint64_t spent;
    uint64_t lost;
};

#ifdef __cplusplus
static_assert(sizeof(BindEvent) == 96, "the record has no gaps");
} // namespace zenlot
#endif

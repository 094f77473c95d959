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
typedef std::uint8_t zenlot_u8;
typedef std::uint16_t zenlot_u16;
typedef std::uint32_t zenlot_u32;
typedef std::int32_t zenlot_s32;
typedef std::uint64_t zenlot_u64;
#else
#include <linux/types.h>
typedef __u8 zenlot_u8;
typedef __u16 zenlot_u16;
typedef __u32 zenlot_u32;
typedef __s32 zenlot_s32;
typedef __u64 zenlot_u64;
#endif

enum zenlot_bind_kind {
    ZENLOT_BIND_REFUSED = 1,   /* bind() failed; `error` says why */
    ZENLOT_LISTEN_REFUSED = 2, /* listen() failed on an address that could be bound */
    ZENLOT_BOUND = 3,          /* bind() gave a port; most listen on it next */
    ZENLOT_LISTENING = 4,
    ZENLOT_LISTENER_ENDED = 5, /* told of whoever closed it */
    ZENLOT_PROCESS_ENDED = 6,  /* of one that was refused before; `error` is its wait status */
};

enum zenlot_bind_flag {
    ZENLOT_V6_ONLY = 1,       /* the socket leaves IPv4 to others */
    ZENLOT_KERNEL_CHOSEN = 2, /* any port was asked for */
};

enum { ZENLOT_COMMAND_LENGTH = 16, ZENLOT_ADDRESS_LENGTH = 16 };

struct zenlot_bind_event {
    zenlot_u64 happened_at;
    zenlot_u64 process_started_at;
    zenlot_u64 control_group;
    zenlot_u64 network_cookie; /* 0 where the kernel has none (before 5.12) */
    zenlot_u32 network_inode;  /* what /proc/PID/ns/net is called; given to others later */
    zenlot_u32 process;
    zenlot_u32 thread;
    zenlot_u32 parent;
    zenlot_u32 user; /* who gets to know; the one who runs the process, or who made the listener */
    zenlot_s32 error;
    zenlot_u16 port;
    zenlot_u16 reserved;
    zenlot_u8 kind;
    zenlot_u8 family; /* 4 or 6; 0 where there is no address */
    zenlot_u8 flags;
    zenlot_u8 reserved_too;
    zenlot_u8 address[ZENLOT_ADDRESS_LENGTH];
    char command[ZENLOT_COMMAND_LENGTH]; /* of the process; ends with a zero */
};

/* What is shared between the program in the kernel and who loads it. */
enum { ZENLOT_BUDGET_PER_TENTH = 256 };

struct zenlot_user_budget {
    zenlot_u64 tenth; /* the tenth of a second that `spent` is about */
    zenlot_u64 spent;
    zenlot_u64 lost;
};

#ifdef __cplusplus
static_assert(sizeof(zenlot_bind_event) == 96, "the record has no gaps");
#endif

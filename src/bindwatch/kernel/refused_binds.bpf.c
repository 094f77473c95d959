// Runs in the kernel: notes attempts to listen on TCP ports, refused and granted, and the ends of
// listeners and of processes that were refused.
//
// Attempts are seen at the end of the kernel's own functions where that is possible, which costs
// nothing elsewhere; else at the end of all system calls, of which only two are looked at. The
// structures below name just the fields that are read; where they are is found out when the program
// is loaded.
#include "../bind_event.h"

#include <bpf/bpf_core_read.h>
#include <bpf/bpf_endian.h>
#include <bpf/bpf_helpers.h>
#include <bpf/bpf_tracing.h>
#include <linux/bpf.h>
#include <linux/types.h>

#define RELOCATED __attribute__((preserve_access_index))

enum { FAMILY_IPV4 = 2, FAMILY_IPV6 = 10 };
enum { TCP = 6, MPTCP = 262 };
enum { STATE_LISTEN = 10 };
enum { TYPE_OF_FILE = 0170000, IS_SOCKET = 0140000 };
enum { NOT_PERMITTED = 13, IN_USE = 98 };
enum { RING_BYTES = 512 * 1024, MOST_USERS = 256, MOST_REFUSED_PROCESSES = 4096 };

struct in6_addr {
    __u8 bytes[16];
};

struct ns_common {
    unsigned int inum;
} RELOCATED;

struct net {
    struct ns_common ns;
    __u64 net_cookie;
} RELOCATED;

typedef struct {
    struct net* net;
} RELOCATED possible_net_t;

struct sock_common {
    unsigned short skc_family;
    unsigned char skc_ipv6only : 1;
    possible_net_t skc_net;
    __u32 skc_rcv_saddr;
    struct in6_addr skc_v6_rcv_saddr;
} RELOCATED;

typedef struct {
    __u32 val;
} RELOCATED kuid_t;

struct sock {
    struct sock_common __sk_common;
    __u16 sk_protocol;
    kuid_t sk_uid;
} RELOCATED;

struct inet_sock {
    __u16 inet_sport;
} RELOCATED;

struct socket {
    struct sock* sk;
} RELOCATED;

struct inode {
    unsigned short i_mode;
} RELOCATED;

struct file {
    struct inode* f_inode;
    void* private_data;
} RELOCATED;

struct fdtable {
    unsigned int max_fds;
    struct file** fd;
} RELOCATED;

struct files_struct {
    struct fdtable* fdt;
} RELOCATED;

typedef struct {
    int counter;
} RELOCATED atomic_t;

struct signal_struct {
    atomic_t live;
    int group_exit_code;
} RELOCATED;

struct task_struct {
    int tgid;
    int exit_code;
    __u64 start_boottime;
    char comm[ZENLOT_COMMAND_LENGTH];
    struct task_struct* real_parent;
    struct task_struct* group_leader;
    struct files_struct* files;
    struct signal_struct* signal;
} RELOCATED;

// The registers of a system call, on the processors that are known here.
struct pt_regs___x86_64 {
    unsigned long di;
    unsigned long si;
    unsigned long orig_ax;
} RELOCATED;

struct pt_regs___arm64 {
    __u64 regs[31];
    __u64 orig_x0;
    __s32 syscallno;
} RELOCATED;

// Laid out for all programs alike, so nothing is relocated.
struct user_address {
    __u16 family;
    __u16 port; // in network byte order
    union {
        __u8 ipv4[4];
        struct {
            __u32 flow;
            __u8 ipv6[16];
        };
    };
};

struct {
    __uint(type, BPF_MAP_TYPE_RINGBUF);
    __uint(max_entries, RING_BYTES);
} events SEC(".maps");

// The users who have a reader; of others nothing is noted.
struct {
    __uint(type, BPF_MAP_TYPE_HASH);
    __uint(max_entries, MOST_USERS);
    __type(key, __u32);
    __type(value, __u8);
} followed SEC(".maps");

// So that nobody's flood takes the place of what others have to be told.
struct {
    __uint(type, BPF_MAP_TYPE_LRU_HASH);
    __uint(max_entries, MOST_USERS);
    __type(key, __u32);
    __type(value, struct UserBudget);
} budgets SEC(".maps");

// The processes whose end is worth being told.
struct {
    __uint(type, BPF_MAP_TYPE_LRU_HASH);
    __uint(max_entries, MOST_REFUSED_PROCESSES);
    __type(key, __u32);
    __type(value, __u32); // the user
} refused SEC(".maps");

// Of the processor that the program is loaded on.
const volatile long bind_call = -1;
const volatile long listen_call = -1;

// Nothing for a user whom nobody follows. With a count of what finds no room.
static struct BindEvent* reserve(__u32 user) {
    if (!bpf_map_lookup_elem(&followed, &user))
        return 0;
    const __u64 tenth = bpf_ktime_get_boot_ns() / 100000000;
    struct UserBudget* budget = bpf_map_lookup_elem(&budgets, &user);
    if (!budget) {
        const struct UserBudget fresh = {.tenth = tenth};
        bpf_map_update_elem(&budgets, &user, &fresh, BPF_NOEXIST);
        budget = bpf_map_lookup_elem(&budgets, &user);
        if (!budget)
            return 0;
    }
    if (budget->tenth != tenth) {
        budget->tenth = tenth;
        budget->spent = 0;
    }
    if (budget->spent >= ZENLOT_BUDGET_PER_TENTH) {
        __sync_fetch_and_add(&budget->lost, 1);
        return 0;
    }
    __sync_fetch_and_add(&budget->spent, 1);
    struct BindEvent* event = bpf_ringbuf_reserve(&events, sizeof(*event), 0);
    if (!event) {
        __sync_fetch_and_add(&budget->lost, 1);
        return 0;
    }
    __builtin_memset(event, 0, sizeof(*event));
    event->user = user;
    return event;
}

static __u32 current_user(void) {
    return (__u32)bpf_get_current_uid_gid();
}

static void describe_process(struct BindEvent* event) {
    const struct task_struct* task = (const struct task_struct*)bpf_get_current_task();
    const __u64 ids = bpf_get_current_pid_tgid();
    event->happened_at = bpf_ktime_get_boot_ns();
    event->process = ids >> 32;
    event->thread = (__u32)ids;
    event->process_started_at = BPF_CORE_READ(task, group_leader, start_boottime);
    event->parent = BPF_CORE_READ(task, real_parent, tgid);
    event->control_group = bpf_get_current_cgroup_id();
    BPF_CORE_READ_STR_INTO(&event->command, task, group_leader, comm);
}

static void describe_network(struct BindEvent* event, const struct sock* sock) {
    const struct net* net = BPF_CORE_READ(sock, __sk_common.skc_net.net);
    event->network_inode = BPF_CORE_READ(net, ns.inum);
    if (bpf_core_field_exists(net->net_cookie))
        event->network_cookie = BPF_CORE_READ(net, net_cookie);
    if (BPF_CORE_READ_BITFIELD_PROBED(sock, __sk_common.skc_ipv6only))
        event->flags |= ZENLOT_V6_ONLY;
}

static void describe_address(struct BindEvent* event, const struct sock* sock) {
    // A listener that is being closed may have given its number back, but not this copy.
    event->port = bpf_ntohs(BPF_CORE_READ((const struct inet_sock*)sock, inet_sport));
    if (BPF_CORE_READ(sock, __sk_common.skc_family) == FAMILY_IPV4) {
        const __u32 address = BPF_CORE_READ(sock, __sk_common.skc_rcv_saddr);
        event->family = 4;
        __builtin_memcpy(event->address, &address, sizeof(address));
    } else {
        event->family = 6;
        if (bpf_core_field_exists(sock->__sk_common.skc_v6_rcv_saddr))
            bpf_core_read(event->address, sizeof(event->address),
                          &sock->__sk_common.skc_v6_rcv_saddr);
    }
}

static int is_tcp(const struct sock* sock) {
    const __u16 family = BPF_CORE_READ(sock, __sk_common.skc_family);
    const __u16 protocol = BPF_CORE_READ(sock, sk_protocol);
    return (family == FAMILY_IPV4 || family == FAMILY_IPV6) &&
           (protocol == TCP || protocol == MPTCP);
}

static int is_refusal(long result) {
    return result == -IN_USE || result == -NOT_PERMITTED;
}

static void note_refused(__u32 user) {
    const __u32 process = bpf_get_current_pid_tgid() >> 32;
    bpf_map_update_elem(&refused, &process, &user, BPF_ANY);
}

// `asked` holds what the program asked for.
static void note_bind(const struct sock* sock, const struct user_address* asked, long result) {
    const int is_ipv6 = asked->family == FAMILY_IPV6;
    if ((result != 0 && (!is_refusal(result) || asked->port == 0)) ||
        (!is_ipv6 && asked->family != FAMILY_IPV4 && asked->family != 0) || !is_tcp(sock))
        return;
    const __u32 user = current_user();
    struct BindEvent* event = reserve(user);
    if (!event)
        return;
    describe_process(event);
    describe_network(event, sock);
    if (result == 0) {
        event->kind = ZENLOT_BOUND;
        describe_address(event, sock);
        if (asked->port == 0)
            event->flags |= ZENLOT_KERNEL_CHOSEN;
    } else {
        event->kind = ZENLOT_BIND_REFUSED;
        event->error = (__s32)-result;
        event->port = bpf_ntohs(asked->port);
        event->family = is_ipv6 ? 6 : 4;
        if (is_ipv6)
            __builtin_memcpy(event->address, asked->ipv6, sizeof(asked->ipv6));
        else
            __builtin_memcpy(event->address, asked->ipv4, sizeof(asked->ipv4));
        note_refused(user);
    }
    bpf_ringbuf_submit(event, 0);
}

static void note_refused_listen(const struct sock* sock, long result) {
    if (!is_refusal(result) || !is_tcp(sock))
        return;
    const __u32 user = current_user();
    struct BindEvent* event = reserve(user);
    if (!event)
        return;
    describe_process(event);
    describe_network(event, sock);
    describe_address(event, sock);
    event->kind = ZENLOT_LISTEN_REFUSED;
    event->error = (__s32)-result;
    note_refused(user);
    bpf_ringbuf_submit(event, 0);
}

// What the kernel has already copied.
static void note_bind_of_kernel(const struct socket* socket, const void* address, long result) {
    struct user_address asked = {};
    if (result != 0 && !is_refusal(result))
        return;
    // Room for the longer kind of address is there in any case.
    bpf_probe_read_kernel(&asked, sizeof(asked), address);
    note_bind(BPF_CORE_READ(socket, sk), &asked, result);
}

SEC("fexit/inet_bind")
int BPF_PROG(inet_bind, struct socket* socket, void* address, int length, int result) {
    note_bind_of_kernel(socket, address, result);
    return 0;
}

SEC("fexit/inet6_bind")
int BPF_PROG(inet6_bind, struct socket* socket, void* address, int length, int result) {
    note_bind_of_kernel(socket, address, result);
    return 0;
}

SEC("fexit/inet_listen")
int BPF_PROG(inet_listen, struct socket* socket, int backlog, int result) {
    note_refused_listen(BPF_CORE_READ(socket, sk), result);
    return 0;
}

// Until Linux 6.6 these two go through the ones above.
SEC("fexit/mptcp_bind")
int BPF_PROG(mptcp_bind, struct socket* socket, void* address, int length, int result) {
    note_bind_of_kernel(socket, address, result);
    return 0;
}

SEC("fexit/mptcp_listen")
int BPF_PROG(mptcp_listen, struct socket* socket, int backlog, int result) {
    note_refused_listen(BPF_CORE_READ(socket, sk), result);
    return 0;
}

// The socket behind a descriptor of the process. Another thread may have put another file in its
// place meanwhile, hence the look at what it is.
static const struct sock* socket_of(__u32 descriptor) {
    const struct task_struct* task = (const struct task_struct*)bpf_get_current_task();
    const struct fdtable* table = BPF_CORE_READ(task, files, fdt);
    if (descriptor >= BPF_CORE_READ(table, max_fds))
        return 0;
    struct file** const files = BPF_CORE_READ(table, fd);
    struct file* file = 0;
    bpf_probe_read_kernel(&file, sizeof(file), &files[descriptor]);
    if (!file || (BPF_CORE_READ(file, f_inode, i_mode) & TYPE_OF_FILE) != IS_SOCKET)
        return 0;
    const struct socket* socket = BPF_CORE_READ(file, private_data);
    return socket ? BPF_CORE_READ(socket, sk) : 0;
}

static void note_call(long call, long result, __u32 descriptor, const void* address) {
    const struct sock* sock = socket_of(descriptor);
    if (!sock)
        return;
    if (call == listen_call) {
        note_refused_listen(sock, result);
        return;
    }
    struct user_address asked = {};
    // An IPv4 address is shorter, and may stand at the very end of what can be read.
    if (bpf_probe_read_user(&asked, sizeof(asked), address) != 0 &&
        bpf_probe_read_user(&asked, 8, address) != 0)
        return;
    note_bind(sock, &asked, result);
}

SEC("tp_btf/sys_exit")
int BPF_PROG(call_ended, void* registers, long result) {
    if (result != 0 && !is_refusal(result))
        return 0;
    const struct pt_regs___x86_64* x86 = registers;
    const struct pt_regs___arm64* arm = registers;
    if (bpf_core_field_exists(x86->orig_ax)) {
        const long call = (long)BPF_CORE_READ(x86, orig_ax);
        if (call != bind_call && (call != listen_call || result == 0))
            return 0;
        note_call(call, result, (__u32)BPF_CORE_READ(x86, di), (void*)BPF_CORE_READ(x86, si));
    } else if (bpf_core_field_exists(arm->syscallno)) {
        const long call = BPF_CORE_READ(arm, syscallno);
        if (call != bind_call && (call != listen_call || result == 0))
            return 0;
        note_call(call, result, (__u32)BPF_CORE_READ(arm, orig_x0),
                  (void*)BPF_CORE_READ(arm, regs[1]));
    }
    return 0;
}

SEC("tp_btf/inet_sock_set_state")
int BPF_PROG(state_changed, const struct sock* sock, int before, int now) {
    if ((before != STATE_LISTEN && now != STATE_LISTEN) || before == now)
        return 0;
    // Of an MPTCP listener the TCP socket below it counts, which is the one that has the port.
    if (BPF_CORE_READ(sock, sk_protocol) != TCP)
        return 0;
    struct BindEvent* event = reserve(BPF_CORE_READ(sock, sk_uid.val));
    if (!event)
        return 0;
    describe_process(event);
    describe_network(event, sock);
    describe_address(event, sock);
    event->kind = now == STATE_LISTEN ? ZENLOT_LISTENING : ZENLOT_LISTENER_ENDED;
    bpf_ringbuf_submit(event, 0);
    return 0;
}

SEC("tp_btf/sched_process_exit")
int BPF_PROG(thread_ended) {
    const __u32 process = bpf_get_current_pid_tgid() >> 32;
    const __u32* found = bpf_map_lookup_elem(&refused, &process);
    if (!found)
        return 0;
    const struct task_struct* task = (const struct task_struct*)bpf_get_current_task();
    if (BPF_CORE_READ(task, signal, live.counter) != 0)
        return 0;
    const __u32 user = *found;
    bpf_map_delete_elem(&refused, &process);
    struct BindEvent* event = reserve(user);
    if (!event)
        return 0;
    describe_process(event);
    event->kind = ZENLOT_PROCESS_ENDED;
    const int status = BPF_CORE_READ(task, signal, group_exit_code);
    event->error = status ? status : BPF_CORE_READ(task, exit_code);
    bpf_ringbuf_submit(event, 0);
    return 0;
}

// Some helpers are for such programs only.
char _license[] SEC("license") = "Dual MIT/GPL";

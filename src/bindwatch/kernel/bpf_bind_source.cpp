#include "bindwatch/kernel/bpf_bind_source.h"

#include "refused_binds.skel.h"

#include <bpf/bpf.h>
#include <bpf/btf.h>
#include <bpf/libbpf.h>
#include <malloc.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <tuple>
#include <utility>

namespace zenlot {
namespace {

// The library has one way for all to say what went wrong.
std::string* lastWords = nullptr;

int keepWords(libbpf_print_level level, const char* format, va_list values) {
    if (level != LIBBPF_WARN || lastWords == nullptr)
        return 0;
    char line[256];
    std::vsnprintf(line, sizeof line, format, values);
    *lastWords = line;
    while (!lastWords->empty() && lastWords->back() == '\n')
        lastWords->pop_back();
    return 0;
}

bool hasFunction(const btf* types, const char* name) {
    return btf__find_by_name_kind(types, name, BTF_KIND_FUNC) >= 0;
}

// Programs in the kernel see the numbers that processes have outside of all containers.
bool seesAllProcesses() {
    constexpr ino_t kFirstNamespace = 0xEFFFFFFC;
    struct stat numbers {};
    return ::stat("/proc/self/ns/pid", &numbers) != 0 || numbers.st_ino == kFirstNamespace;
}

} // namespace

struct BpfBindSource::Loaded {
    struct ObjectEnd {
        void operator()(refused_binds* object) const { refused_binds__destroy(object); }
    };
    struct RingEnd {
        void operator()(ring_buffer* ring) const { ring_buffer__free(ring); }
    };

    std::unique_ptr<refused_binds, ObjectEnd> object;
    std::unique_ptr<ring_buffer, RingEnd> ring;
    const std::function<void(const BindEvent&)>* call{nullptr};

    static int take(void* context, void* record, std::size_t size) {
        const auto* self = static_cast<const Loaded*>(context);
        if (size >= sizeof(BindEvent) && self->call != nullptr) {
            BindEvent event;
            std::memcpy(&event, record, sizeof event);
            (*self->call)(event);
        }
        return 0;
    }
};

BpfBindSource::BpfBindSource() = default;
BpfBindSource::~BpfBindSource() = default;

bool BpfBindSource::load() {
    if (!seesAllProcesses()) {
        why_ = "in a container, where processes have other numbers than the kernel tells";
        return false;
    }
    libbpf_set_print(keepWords);
    lastWords = &why_;
    // Only at the attempt does it show whether the kernel was built with what is needed.
    const bool isLoaded = load(Method::functions) || load(Method::systemCalls);
    lastWords = nullptr;
    // What the library read of the kernel's types is some megabytes, and needed no more.
    ::malloc_trim(0);
    return isLoaded;
}

bool BpfBindSource::load(Method method) {
    const auto types =
        std::unique_ptr<btf, decltype(&btf__free)>(btf__load_vmlinux_btf(), btf__free);
    if (!types) {
        why_ = "the kernel has no /sys/kernel/btf/vmlinux";
        return false;
    }
    auto loaded = std::make_unique<Loaded>();
    loaded->object.reset(refused_binds__open());
    if (!loaded->object)
        return false;
    auto& programs = loaded->object->progs;
    const bool byFunctions = method == Method::functions;
    // What MPTCP does since then no longer passes the others.
    const bool hasOwnMptcp = hasFunction(types.get(), "inet_bind_sk");
    for (const auto& [program, name, isNeeded] :
         {std::tuple(programs.inet_bind, "inet_bind", true),
          std::tuple(programs.inet6_bind, "inet6_bind", true),
          std::tuple(programs.inet_listen, "inet_listen", true),
          std::tuple(programs.mptcp_bind, "mptcp_bind", hasOwnMptcp),
          std::tuple(programs.mptcp_listen, "mptcp_listen", hasOwnMptcp)})
        bpf_program__set_autoload(program,
                                  byFunctions && isNeeded && hasFunction(types.get(), name));
    bpf_program__set_autoload(programs.call_ended, !byFunctions);
    loaded->object->rodata->bind_call = SYS_bind;
    loaded->object->rodata->listen_call = SYS_listen;
    if (refused_binds__load(loaded->object.get()) != 0)
        return false;
    loaded->ring.reset(ring_buffer__new(bpf_map__fd(loaded->object->maps.events), &Loaded::take,
                                        loaded.get(), nullptr));
    if (!loaded->ring || refused_binds__attach(loaded->object.get()) != 0)
        return false;
    refused_binds__detach(loaded->object.get());
    loaded_ = std::move(loaded);
    method_ = method;
    return true;
}

bool BpfBindSource::start() {
    if (!loaded_)
        return false;
    read([](const BindEvent&) {}); // of the time before
    return refused_binds__attach(loaded_->object.get()) == 0;
}

void BpfBindSource::stop() {
    if (loaded_)
        refused_binds__detach(loaded_->object.get());
}

bool BpfBindSource::follow(std::uint32_t user) {
    const std::uint8_t value = 1;
    return loaded_ && bpf_map_update_elem(bpf_map__fd(loaded_->object->maps.followed), &user,
                                          &value, BPF_ANY) == 0;
}

void BpfBindSource::unfollow(std::uint32_t user) {
    if (loaded_)
        bpf_map_delete_elem(bpf_map__fd(loaded_->object->maps.followed), &user);
}

int BpfBindSource::descriptor() const {
    return loaded_ ? ring_buffer__epoll_fd(loaded_->ring.get()) : -1;
}

void BpfBindSource::read(const std::function<void(const BindEvent&)>& call) {
    if (!loaded_)
        return;
    loaded_->call = &call;
    ring_buffer__consume(loaded_->ring.get());
    loaded_->call = nullptr;
}

std::uint64_t BpfBindSource::lostOf(std::uint32_t user) const {
    UserBudget budget{};
    if (!loaded_ ||
        bpf_map_lookup_elem(bpf_map__fd(loaded_->object->maps.budgets), &user, &budget) != 0)
        return 0;
    return budget.lost;
}

} // namespace zenlot

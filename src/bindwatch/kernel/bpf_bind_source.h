// The events as the kernel sees them: loads the program of refused_binds.bpf.c.
//
// Needs CAP_BPF and CAP_PERFMON, a kernel from 5.10 on with its type information in
// /sys/kernel/btf/vmlinux, and tracing of functions or of system calls in it.
#pragma once

#include "bindwatch/bind_source.h"

#include <cstdint>
#include <memory>
#include <string>

namespace zenlot {

class BpfBindSource final : public BindSource {
  public:
    // How attempts are seen: where the kernel's own functions end, or where all system calls do,
    // which costs each of them a little.
    enum class Method : std::uint8_t { functions, systemCalls };

    BpfBindSource();
    ~BpfBindSource() override;

    // False when the kernel refuses; why() then has its word.
    bool load();
    Method method() const { return method_; }
    const std::string& why() const { return why_; }

    bool start() override;
    void stop() override;
    bool follow(std::uint32_t user) override;
    void unfollow(std::uint32_t user) override;
    int descriptor() const override;
    void read(const std::function<void(const BindEvent&)>& call) override;
    std::uint64_t lostOf(std::uint32_t user) const override;

  private:
    struct Loaded;

    bool load(Method method);

    Method method_{Method::functions};
    std::string why_;
    std::unique_ptr<Loaded> loaded_;
};

} // namespace zenlot

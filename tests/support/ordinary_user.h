#pragma once

// Rights of an ordinary user for tests that a superuser runs too: permissions of files hold for it again.

#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cstdint>

namespace glintara::testing {

/// While it lives, this thread can no longer read and write what the permissions of files forbid. It stays the owner of
/// its files, so it finds its way through folders that no other user may enter.
class OrdinaryUser {
  public:
    OrdinaryUser() {
        EXPECT_EQ(syscall(SYS_capget, &header_, before_.data()), 0);
        Rights less = before_;
        less[0].effective &= ~(1U << CAP_DAC_OVERRIDE | 1U << CAP_DAC_READ_SEARCH);
        EXPECT_EQ(syscall(SYS_capset, &header_, less.data()), 0);
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() { EXPECT_EQ(syscall(SYS_capset, &header_, before_.data()), 0); }

  private:
    struct Word {
        std::uint32_t effective = 0;
        std::uint32_t permitted = 0;
        std::uint32_t inheritable = 0;
    };
    using Rights = std::array<Word, _LINUX_CAPABILITY_U32S_3>;

    __user_cap_header_struct header_{_LINUX_CAPABILITY_VERSION_3, 0};
    Rights before_{};
};

}  // namespace glintara::testing

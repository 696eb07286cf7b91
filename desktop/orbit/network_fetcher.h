#pragma once

// The desktop's network behind the downloads.

#include <QNetworkAccessManager>
#include <memory>
#include <string>

#include "orbit/fetcher.h"

namespace glintara::desktop {

/// How long a server may send nothing, milliseconds.
inline constexpr int kLongestSilence = 30000;

/// Reads by http and https through the system's proxies. Redirections are followed, ten at most, but never from https
/// to http and never to another scheme. The program names itself and its version.
class NetworkFetcher : public Fetcher {
  public:
    explicit NetworkFetcher(int longestSilence = kLongestSilence);
    NetworkFetcher(const NetworkFetcher&) = delete;
    NetworkFetcher& operator=(const NetworkFetcher&) = delete;
    ~NetworkFetcher() override;

    std::unique_ptr<Transfer> Open(const std::string& address) override;

  private:
    const int longestSilence_;
    std::unique_ptr<QNetworkAccessManager> manager_;  // made with the first download
};

}  // namespace glintara::desktop

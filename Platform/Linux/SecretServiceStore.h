// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroCore/Services/SecretStore.h"
#include "LumaroCore/Support/Sleeper.h"

#include <atomic>
#include <memory>

namespace lumaro {

/// Secrets in the desktop's keyring, through the Secret Service of the session's bus. New items go to the default
/// collection; they are found in every collection.
///
/// A keyring that is shut is asked to open, which asks the person. One who would not, or did not answer, is not asked
/// again before `askAgain`: until then the answer is `locked`.
class SecretServiceStore final : public Keyring {
public:
    struct Limits {
        Seconds answer{10};  ///< for what the service does by itself
        Seconds prompt{120}; ///< for what it asks the person
    };

    SecretServiceStore() : SecretServiceStore(Limits{}) {}
    explicit SecretServiceStore(Limits limits);
    ~SecretServiceStore() override;

    [[nodiscard]] std::expected<std::string, SecretStatus> query(const SecretAddress& address) override;
    [[nodiscard]] SecretStatus add(const SecretAddress& address, std::string_view data) override;
    [[nodiscard]] SecretStatus update(const SecretAddress& address, std::string_view data) override;
    [[nodiscard]] SecretStatus remove(const SecretAddress& address) override;
    void askAgain() override { mayAsk_ = true; }
    void stop() override;

private:
    class Conversation;
    struct Stop;

    Limits limits_;
    std::atomic<bool> mayAsk_ = true;
    std::unique_ptr<Stop> stop_;
};

} // namespace lumaro

// SPDX-License-Identifier: Apache-2.0
#include "Platform/Linux/SecretServiceStore.h"

#include "Platform/Linux/GLibCall.h"

#include <libsecret/secret.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

using Items = std::vector<GLibOwned<SecretItem>>;

struct TableRelease {
    void operator()(GHashTable* table) const { g_hash_table_unref(table); }
};
using Attributes = std::unique_ptr<GHashTable, TableRelease>;

struct SecretRelease {
    void operator()(SecretValue* value) const { secret_value_unref(value); }
};
using Secret = std::unique_ptr<SecretValue, SecretRelease>;

const SecretSchema& schema() {
    static const SecretSchema ours = [] {
        SecretSchema made{};
        made.name = "app.lumaro.Secret";
        made.attributes[0] = {"service", SECRET_SCHEMA_ATTRIBUTE_STRING};
        made.attributes[1] = {"account", SECRET_SCHEMA_ATTRIBUTE_STRING};
        return made;
    }();
    return ours;
}

Attributes attributesOf(const SecretAddress& address) {
    return Attributes{secret_attributes_build(&schema(), "service", address.service.c_str(), "account",
                                              address.account.c_str(), nullptr)};
}

Secret secretOf(std::string_view data) {
    return Secret{secret_value_new(data.data(), static_cast<gssize>(data.size()), "text/plain")};
}

SecretStatus statusOf(const GError& error) {
    if (error.domain == SECRET_ERROR && error.code == SECRET_ERROR_IS_LOCKED) return SecretStatus::locked;
    const bool isNobodyThere =
        error.domain == G_DBUS_ERROR &&
        (error.code == G_DBUS_ERROR_SERVICE_UNKNOWN || error.code == G_DBUS_ERROR_NAME_HAS_NO_OWNER ||
         (error.code >= G_DBUS_ERROR_SPAWN_EXEC_FAILED && error.code <= G_DBUS_ERROR_SPAWN_NO_MEMORY));
    return isNobodyThere ? SecretStatus::noService : SecretStatus::other;
}

bool wasCancelled(const GError& error) {
    return g_error_matches(&error, G_IO_ERROR, G_IO_ERROR_CANCELLED) != FALSE;
}

bool isLocked(const GLibOwned<SecretItem>& item) {
    return secret_item_get_locked(item.get()) != FALSE;
}

} // namespace

struct SecretServiceStore::Stop {
    GLibOwned<GCancellable> cancellable{g_cancellable_new()};
};

// One operation's talk with the service.
class SecretServiceStore::Conversation {
public:
    template <class T>
    using Result = std::expected<T, SecretStatus>;

    explicit Conversation(SecretServiceStore& store) : store_(store), calls_(*store.stop_->cancellable) {}
    Conversation(const Conversation&) = delete;
    Conversation& operator=(const Conversation&) = delete;
    ~Conversation() {
        service_.reset();
        // The bus of the next conversation may be another.
        calls_.release(GLibOwned<GObject>{G_OBJECT(bus_.release())});
    }

    Result<void> open();
    // All items of the address, of an open keyring; or why it stays shut.
    Result<Items> find(const SecretAddress& address);
    Result<std::string> dataOf(SecretItem& item);
    SecretStatus setData(SecretItem& item, std::string_view data);
    SecretStatus create(const SecretAddress& address, std::string_view data);
    SecretStatus remove(SecretItem& item);

private:
    Result<Items> search(GHashTable& attributes);
    Result<GLibOwned<SecretCollection>> defaultCollection();
    SecretStatus unlock(GDBusProxy* what);
    // Asks the person for the password of a first keyring.
    SecretStatus createCollection();
    // What became of a prompt: `isDone` is false where the person dismissed it.
    SecretStatus answered(const std::expected<bool, GLibOwned<GError>>& isDone);

    SecretServiceStore& store_;
    GLibCalls calls_;
    // Below the calls: what they hold goes before the context that they live in.
    GLibOwned<GDBusConnection> bus_;
    GLibOwned<SecretService> service_;
};

SecretServiceStore::Conversation::Result<void> SecretServiceStore::Conversation::open() {
    const auto limit = store_.limits_.answer;
    auto bus = calls_.wait(
        limit, [](auto* cancel, auto then, auto data) { g_bus_get(G_BUS_TYPE_SESSION, cancel, then, data); },
        [](auto* result, auto** error) { return GLibOwned<GDBusConnection>{g_bus_get_finish(result, error)}; });
    if (!bus) return std::unexpected(wasCancelled(*bus.error()) ? SecretStatus::other : SecretStatus::noService);
    bus_ = std::move(*bus);
    // The session ended, and something else in this program keeps its bus.
    if (g_dbus_connection_is_closed(bus_.get()) != FALSE) return std::unexpected(SecretStatus::noService);
    // Or the end of the session would end this program in the middle of its work.
    g_dbus_connection_set_exit_on_close(bus_.get(), FALSE);
    auto service = calls_.wait(
        limit,
        [](auto* cancel, auto then, auto data) {
            secret_service_open(SECRET_TYPE_SERVICE, nullptr, SECRET_SERVICE_OPEN_SESSION, cancel, then, data);
        },
        [](auto* result, auto** error) { return GLibOwned<SecretService>{secret_service_open_finish(result, error)}; });
    if (!service) return std::unexpected(statusOf(*service.error()));
    service_ = std::move(*service);
    return {};
}

SecretServiceStore::Conversation::Result<Items> SecretServiceStore::Conversation::search(GHashTable& attributes) {
    const auto found = calls_.wait(
        store_.limits_.answer,
        [&](auto* cancel, auto then, auto data) {
            secret_service_search(service_.get(), &schema(), &attributes, SECRET_SEARCH_ALL, cancel, then, data);
        },
        [&](auto* result, auto** error) { return secret_service_search_finish(service_.get(), result, error); });
    if (!found) return std::unexpected(statusOf(*found.error()));
    Items items;
    for (const auto* link = *found; link != nullptr; link = link->next) items.emplace_back(SECRET_ITEM(link->data));
    g_list_free(*found);
    return items;
}

SecretServiceStore::Conversation::Result<GLibOwned<SecretCollection>>
SecretServiceStore::Conversation::defaultCollection() {
    auto collection = calls_.wait(
        store_.limits_.answer,
        [&](auto* cancel, auto then, auto data) {
            secret_collection_for_alias(service_.get(), SECRET_COLLECTION_DEFAULT, SECRET_COLLECTION_NONE, cancel, then,
                                        data);
        },
        [](auto* result, auto** error) {
            return GLibOwned<SecretCollection>{secret_collection_for_alias_finish(result, error)};
        });
    if (!collection) return std::unexpected(statusOf(*collection.error()));
    return std::move(*collection);
}

SecretStatus SecretServiceStore::Conversation::answered(const std::expected<bool, GLibOwned<GError>>& isDone) {
    if (isDone && *isDone) return SecretStatus::success;
    if (!isDone && !wasCancelled(*isDone.error())) return statusOf(*isDone.error());
    store_.mayAsk_ = false;
    return isDone ? SecretStatus::promptDismissed : SecretStatus::locked;
}

SecretStatus SecretServiceStore::Conversation::unlock(GDBusProxy* what) {
    if (!store_.mayAsk_) return SecretStatus::locked;
    GList objects{what, nullptr, nullptr};
    return answered(calls_.wait(
        store_.limits_.prompt,
        [&](auto* cancel, auto then, auto data) {
            secret_service_unlock(service_.get(), &objects, cancel, then, data);
        },
        [&](auto* result, auto** error) {
            return secret_service_unlock_finish(service_.get(), result, nullptr, error) > 0;
        }));
}

SecretStatus SecretServiceStore::Conversation::createCollection() {
    if (!store_.mayAsk_) return SecretStatus::locked;
    return answered(calls_.wait(
        store_.limits_.prompt,
        [&](auto* cancel, auto then, auto data) {
            secret_collection_create(service_.get(), "Default keyring", SECRET_COLLECTION_DEFAULT,
                                     SECRET_COLLECTION_CREATE_NONE, cancel, then, data);
        },
        [](auto* result, auto** error) {
            const GLibOwned<SecretCollection> made{secret_collection_create_finish(result, error)};
            // Of a prompt that was dismissed the library tells that it cannot find what was made.
            if (g_error_matches(*error, G_DBUS_ERROR, G_DBUS_ERROR_UNKNOWN_METHOD) != FALSE) g_clear_error(error);
            return made != nullptr;
        }));
}

// A keyring that is shut may have the item and not show it: that nothing was found counts only when it is open.
SecretServiceStore::Conversation::Result<Items> SecretServiceStore::Conversation::find(const SecretAddress& address) {
    const auto attributes = attributesOf(address);
    auto items = search(*attributes);
    if (!items) return items;
    if (std::ranges::all_of(*items, isLocked)) {
        auto collection = defaultCollection();
        if (!collection) return std::unexpected(collection.error());
        GDBusProxy* shut = items->empty() ? nullptr : G_DBUS_PROXY(items->front().get());
        if (shut == nullptr && *collection && secret_collection_get_locked(collection->get()) != FALSE) {
            shut = G_DBUS_PROXY(collection->get());
        }
        if (shut == nullptr) return items;
        if (const auto status = unlock(shut); status != SecretStatus::success) return std::unexpected(status);
        items = search(*attributes);
    }
    if (items) std::erase_if(*items, isLocked);
    return items;
}

SecretServiceStore::Conversation::Result<std::string> SecretServiceStore::Conversation::dataOf(SecretItem& item) {
    const auto loaded = calls_.wait(
        store_.limits_.answer,
        [&](auto* cancel, auto then, auto data) { secret_item_load_secret(&item, cancel, then, data); },
        [&](auto* result, auto** error) { return secret_item_load_secret_finish(&item, result, error); });
    if (!loaded) return std::unexpected(statusOf(*loaded.error()));
    const Secret secret{secret_item_get_secret(&item)};
    if (!secret) return std::unexpected(SecretStatus::other);
    gsize size = 0;
    const auto* const bytes = secret_value_get(secret.get(), &size);
    return std::string{bytes, size};
}

SecretStatus SecretServiceStore::Conversation::setData(SecretItem& item, std::string_view data) {
    const auto secret = secretOf(data);
    const auto set = calls_.wait(
        store_.limits_.answer,
        [&](auto* cancel, auto then, auto user) { secret_item_set_secret(&item, secret.get(), cancel, then, user); },
        [&](auto* result, auto** error) { return secret_item_set_secret_finish(&item, result, error); });
    return set ? SecretStatus::success : statusOf(*set.error());
}

SecretStatus SecretServiceStore::Conversation::create(const SecretAddress& address, std::string_view data) {
    const auto collection = defaultCollection();
    if (!collection) return collection.error();
    if (!*collection) {
        if (const auto status = createCollection(); status != SecretStatus::success) return status;
    }
    const auto secret = secretOf(data);
    const auto attributes = attributesOf(address);
    // The person's list of secrets shows it.
    const auto label = "Lumaro: " + address.account;
    return answered(calls_.wait(
        store_.limits_.prompt,
        [&](auto* cancel, auto then, auto user) {
            secret_service_store(service_.get(), &schema(), attributes.get(), SECRET_COLLECTION_DEFAULT, label.c_str(),
                                 secret.get(), cancel, then, user);
        },
        [&](auto* result, auto** error) {
            return secret_service_store_finish(service_.get(), result, error) != FALSE;
        }));
}

SecretStatus SecretServiceStore::Conversation::remove(SecretItem& item) {
    const auto gone = calls_.wait(
        store_.limits_.answer,
        [&](auto* cancel, auto then, auto data) { secret_item_delete(&item, cancel, then, data); },
        [&](auto* result, auto** error) { return secret_item_delete_finish(&item, result, error); });
    return gone ? SecretStatus::success : statusOf(*gone.error());
}

SecretServiceStore::SecretServiceStore(Limits limits) : limits_(limits), stop_(std::make_unique<Stop>()) {
}

SecretServiceStore::~SecretServiceStore() = default;

void SecretServiceStore::stop() {
    g_cancellable_cancel(stop_->cancellable.get());
}

std::expected<std::string, SecretStatus> SecretServiceStore::query(const SecretAddress& address) {
    Conversation talk{*this};
    if (auto opened = talk.open(); !opened) return std::unexpected(opened.error());
    const auto items = talk.find(address);
    if (!items) return std::unexpected(items.error());
    if (items->empty()) return std::unexpected(SecretStatus::itemNotFound);
    return talk.dataOf(*items->front());
}

SecretStatus SecretServiceStore::add(const SecretAddress& address, std::string_view data) {
    Conversation talk{*this};
    if (const auto opened = talk.open(); !opened) return opened.error();
    // The service itself keeps as many items of one address as it is given.
    const auto items = talk.find(address);
    if (!items) return items.error();
    return items->empty() ? talk.create(address, data) : SecretStatus::duplicateItem;
}

SecretStatus SecretServiceStore::update(const SecretAddress& address, std::string_view data) {
    Conversation talk{*this};
    if (const auto opened = talk.open(); !opened) return opened.error();
    const auto items = talk.find(address);
    if (!items) return items.error();
    return items->empty() ? SecretStatus::itemNotFound : talk.setData(*items->front(), data);
}

SecretStatus SecretServiceStore::remove(const SecretAddress& address) {
    Conversation talk{*this};
    if (const auto opened = talk.open(); !opened) return opened.error();
    const auto items = talk.find(address);
    if (!items) return items.error();
    auto status = items->empty() ? SecretStatus::itemNotFound : SecretStatus::success;
    for (const auto& item : *items) {
        if (const auto one = talk.remove(*item); one != SecretStatus::success) status = one;
    }
    return status;
}

} // namespace lumaro

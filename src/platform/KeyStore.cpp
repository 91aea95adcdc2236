#include "platform/KeyStore.h"

#include <libsecret/secret.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

#include "platform/RuntimeError.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace tarvolinex {

namespace {

struct SecretDelete {
  void operator()(GError* error) const { g_error_free(error); }
  void operator()(GObject* object) const { g_object_unref(object); }
  void operator()(SecretSchema* schema) const { secret_schema_unref(schema); }
  void operator()(gchar* password) const { secret_password_free(password); }
};
template <typename T>
using SecretHandle = std::unique_ptr<T, SecretDelete>;

// The name stands in the users' key stores: never change it.
SecretHandle<SecretSchema> MailSchema() {
  return SecretHandle<SecretSchema>(secret_schema_new("tarvolinex.Mail", SECRET_SCHEMA_NONE, "server",
                                                      SECRET_SCHEMA_ATTRIBUTE_STRING, "user",
                                                      SECRET_SCHEMA_ATTRIBUTE_STRING, nullptr));
}

std::string HostOf(const Login& login) {
  return FoldCase(login.server.substr(0, login.server.find(':')));
}

// One question to the store. Its library connects to the bus of the session and keeps the connection; that the bus goes
// away must not end the program.
struct Question {
  GCancellable* stop;
  GError* error = nullptr;
  bool reached = false;

  template <typename Ask>
  void Put(const Ask& ask) {
    GDBusConnection* bus = g_bus_get_sync(G_BUS_TYPE_SESSION, stop, &error);
    if (!bus) return;
    g_dbus_connection_set_exit_on_close(bus, FALSE);
    ask(stop, &error);
    reached = !error ||
              (!g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) && error->domain != G_SPAWN_ERROR);
    secret_service_disconnect();
    g_object_unref(bus);
  }
};

template <typename Ask>
void AskStore(const TransferProgress& progress, const Ask& ask) {
  constexpr std::chrono::milliseconds kTick{30};
  constexpr std::chrono::minutes kLongest{2};  // the user may be typing the store's own password
  const SecretHandle<GObject> stop(G_OBJECT(g_cancellable_new()));
  Question question{G_CANCELLABLE(stop.get())};
  std::atomic<bool> done = false;
  std::thread asking([&] {
    question.Put(ask);
    done = true;
  });
  const auto end = std::chrono::steady_clock::now() + kLongest;
  for (bool goOn = true; !done; std::this_thread::sleep_for(kTick)) {
    if (goOn) goOn = std::chrono::steady_clock::now() < end && (!progress || progress(0, 0));
    if (!goOn) g_cancellable_cancel(question.stop);
  }
  asking.join();
  if (!question.error) return;
  const SecretHandle<GError> error(question.error);
  throw RuntimeError(kMailLoginRefused,
                     question.reached ? Tr("The desktop's key store does not answer as it should: %1", {error->message})
                                      : Tr("This desktop has no key store that keeps passwords: %1", {error->message}));
}

}  // namespace

bool HasStoredPassword(const Login& login, const TransferProgress& progress) {
  bool found = false;
  AskStore(progress, [&](GCancellable* stop, GError** error) {
    GList* items = secret_password_search_sync(MailSchema().get(), SECRET_SEARCH_NONE, stop, error, "server",
                                               HostOf(login).c_str(), "user", login.user.c_str(), nullptr);
    found = items != nullptr;
    g_list_free_full(items, g_object_unref);
  });
  return found;
}

std::optional<std::string> StoredPassword(const Login& login, const TransferProgress& progress) {
  std::optional<std::string> password;
  AskStore(progress, [&](GCancellable* stop, GError** error) {
    const SecretHandle<gchar> found(secret_password_lookup_sync(
        MailSchema().get(), stop, error, "server", HostOf(login).c_str(), "user", login.user.c_str(), nullptr));
    if (found) password = found.get();
  });
  return password;
}

void StorePassword(const Login& login, const std::string& password, const TransferProgress& progress) {
  AskStore(progress, [&](GCancellable* stop, GError** error) {
    const std::string label = "Tarvolinex: " + login.user + ", " + HostOf(login);
    secret_password_store_sync(MailSchema().get(), SECRET_COLLECTION_DEFAULT, label.c_str(), password.c_str(), stop,
                               error, "server", HostOf(login).c_str(), "user", login.user.c_str(), nullptr);
  });
}

void ForgetPassword(const Login& login, const TransferProgress& progress) {
  AskStore(progress, [&](GCancellable* stop, GError** error) {
    secret_password_clear_sync(MailSchema().get(), stop, error, "server", HostOf(login).c_str(), "user",
                               login.user.c_str(), nullptr);
  });
}

}  // namespace tarvolinex

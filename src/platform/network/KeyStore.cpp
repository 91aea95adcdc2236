#include "platform/network/KeyStore.h"

#include <libsecret/secret.h>

#include <chrono>
#include <memory>
#include <thread>
#include <utility>

#include "platform/RuntimeError.h"
#include "platform/text/Text.h"
#include "platform/text/Translation.h"

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

// One question to the store, asked in a main loop of its own, which ends with it.
class Question {
 public:
  explicit Question(const TransferProgress& progress)
      : progress_(progress), loop_(g_main_context_new()), stop_(g_cancellable_new()) {
    g_main_context_push_thread_default(loop_);
  }
  ~Question() {
    secret_service_disconnect();
    while (g_main_context_iteration(loop_, FALSE)) {
    }
    g_main_context_pop_thread_default(loop_);
    g_main_context_unref(loop_);
    g_object_unref(stop_);
  }
  Question(const Question&) = delete;
  Question& operator=(const Question&) = delete;

  // begin(stop, done, this) starts the question; finish(result, error) takes what came of it.
  template <typename Begin, typename Finish>
  void Ask(const Begin& begin, const Finish& finish) {
    g_bus_get(G_BUS_TYPE_SESSION, stop_, Done, this);
    const SecretHandle<GObject> result = Wait();
    GError* error = nullptr;
    const SecretHandle<GObject> bus(reinterpret_cast<GObject*>(g_bus_get_finish(G_ASYNC_RESULT(result.get()), &error)));
    if (!bus) Fail(error);
    // That the session's bus goes away must not end the program.
    g_dbus_connection_set_exit_on_close(G_DBUS_CONNECTION(bus.get()), FALSE);
    begin(stop_, Done, this);
    const SecretHandle<GObject> answer = Wait();
    finish(G_ASYNC_RESULT(answer.get()), &error);
    if (error) Fail(error);
  }

 private:
  static void Done(GObject*, GAsyncResult* result, gpointer question) {
    static_cast<Question*>(question)->result_.reset(G_OBJECT(g_object_ref(result)));
  }

  SecretHandle<GObject> Wait() {
    constexpr std::chrono::milliseconds kTick{5};
    constexpr std::chrono::minutes kLongest{2};  // the user may be typing the store's own password
    const auto end = std::chrono::steady_clock::now() + kLongest;
    for (bool goOn = true; !result_;) {
      if (g_main_context_iteration(loop_, FALSE)) continue;
      if (goOn) goOn = std::chrono::steady_clock::now() < end && (!progress_ || progress_(0, 0));
      if (!goOn) g_cancellable_cancel(stop_);
      std::this_thread::sleep_for(kTick);
    }
    return std::move(result_);
  }

  [[noreturn]] void Fail(GError* failure) {
    const SecretHandle<GError> error(failure);
    if (g_cancellable_is_cancelled(stop_)) {
      throw RuntimeError(kMailLoginRefused, Tr("The desktop's key store has not answered so far"));
    }
    const bool reached = error->domain == SECRET_ERROR || g_dbus_error_is_remote_error(error.get()) != FALSE;
    const bool noService = g_error_matches(error.get(), G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) != FALSE ||
                           error->domain == G_SPAWN_ERROR;
    throw RuntimeError(kMailLoginRefused,
                       reached && !noService
                           ? Tr("The desktop's key store does not answer as it should: %1", {error->message})
                           : Tr("This desktop has no key store that keeps passwords: %1", {error->message}));
  }

  const TransferProgress& progress_;
  GMainContext* loop_;
  GCancellable* stop_;
  SecretHandle<GObject> result_;
};

}  // namespace

bool HasStoredPassword(const Login& login, const TransferProgress& progress) {
  bool found = false;
  Question(progress).Ask(
      [&](GCancellable* stop, GAsyncReadyCallback done, gpointer question) {
        secret_password_search(MailSchema().get(), SECRET_SEARCH_NONE, stop, done, question, "server",
                               HostOf(login).c_str(), "user", login.user.c_str(), nullptr);
      },
      [&](GAsyncResult* result, GError** error) {
        GList* items = secret_password_search_finish(result, error);
        found = items != nullptr;
        g_list_free_full(items, g_object_unref);
      });
  return found;
}

std::optional<std::string> StoredPassword(const Login& login, const TransferProgress& progress) {
  std::optional<std::string> password;
  Question(progress).Ask(
      [&](GCancellable* stop, GAsyncReadyCallback done, gpointer question) {
        secret_password_lookup(MailSchema().get(), stop, done, question, "server", HostOf(login).c_str(), "user",
                               login.user.c_str(), nullptr);
      },
      [&](GAsyncResult* result, GError** error) {
        const SecretHandle<gchar> found(secret_password_lookup_finish(result, error));
        if (found) password = found.get();
      });
  return password;
}

void StorePassword(const Login& login, const std::string& password, const TransferProgress& progress) {
  const std::string label = "Tarvolinex: " + login.user + ", " + HostOf(login);
  Question(progress).Ask(
      [&](GCancellable* stop, GAsyncReadyCallback done, gpointer question) {
        secret_password_store(MailSchema().get(), SECRET_COLLECTION_DEFAULT, label.c_str(), password.c_str(), stop,
                              done, question, "server", HostOf(login).c_str(), "user", login.user.c_str(), nullptr);
      },
      [](GAsyncResult* result, GError** error) { secret_password_store_finish(result, error); });
}

void ForgetPassword(const Login& login, const TransferProgress& progress) {
  Question(progress).Ask(
      [&](GCancellable* stop, GAsyncReadyCallback done, gpointer question) {
        secret_password_clear(MailSchema().get(), stop, done, question, "server", HostOf(login).c_str(), "user",
                              login.user.c_str(), nullptr);
      },
      [](GAsyncResult* result, GError** error) { secret_password_clear_finish(result, error); });
}

}  // namespace tarvolinex

// Stands between a program and a server on this machine, and lets connections go.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace tarvolinex {

class DroppingProxy {
 public:
  explicit DroppingProxy(const std::string& port) : target_(Address(std::stoi(port))) {
    listener_ = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in any = Address(0);
    bind(listener_, reinterpret_cast<sockaddr*>(&any), sizeof any);
    listen(listener_, 8);
    socklen_t length = sizeof any;
    getsockname(listener_, reinterpret_cast<sockaddr*>(&any), &length);
    port_ = std::to_string(ntohs(any.sin_port));
    thread_ = std::thread([this] { Run(); });
  }
  ~DroppingProxy() {
    over_ = true;
    thread_.join();
    close(listener_);
  }
  DroppingProxy(const DroppingProxy&) = delete;
  DroppingProxy& operator=(const DroppingProxy&) = delete;

  const std::string& Port() const { return port_; }
  // How many parcels the program has sent by now: each is a round trip.
  int Parcels() const { return parcels_; }
  // The connection goes before the nth parcel from now, or before the answer to it; 0 = never.
  void DropAt(int parcel, bool answer) {
    answer_ = answer;
    due_ = parcel;
  }
  // From now on the server does not learn of it, as when a cable is pulled.
  void Unplug() { unplugged_ = true; }

 private:
  struct Pair {
    int program, server;
    bool silent = false;  // what the server answers next is lost
  };
  static sockaddr_in Address(int port) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
  }
  void Run() {
    while (!over_) {
      std::vector<pollfd> waiting = {{listener_, POLLIN, 0}};
      for (const Pair& pair : pairs_) {
        waiting.push_back({pair.program, POLLIN, 0});
        waiting.push_back({pair.server, POLLIN, 0});
      }
      if (poll(waiting.data(), waiting.size(), 20) <= 0) continue;
      std::vector<Pair> left;
      for (std::size_t i = 0; i < pairs_.size(); ++i) {
        if (Serve(pairs_[i], waiting[1 + 2 * i].revents != 0, waiting[2 + 2 * i].revents != 0))
          left.push_back(pairs_[i]);
      }
      pairs_ = left;
      if (waiting[0].revents != 0) Accept();
    }
    for (const Pair& pair : pairs_) Close(pair);
  }
  void Accept() {
    const Pair pair = {accept(listener_, nullptr, nullptr), socket(AF_INET, SOCK_STREAM, 0)};
    connect(pair.server, reinterpret_cast<const sockaddr*>(&target_), sizeof target_);
    pairs_.push_back(pair);
  }
  void Close(const Pair& pair) const {
    close(pair.program);
    if (!unplugged_) close(pair.server);
  }
  // Passes on what has come; false when the connection is over.
  bool Serve(Pair& pair, bool fromProgram, bool fromServer) {
    char bytes[65536];
    bool alive = true;
    if (fromProgram) {
      const auto count = read(pair.program, bytes, sizeof bytes);
      ++parcels_;
      const bool dropped = count > 0 && due_ > 0 && --due_ == 0;
      if (dropped) pair.silent = answer_;
      alive = count > 0 && (!dropped || answer_) && write(pair.server, bytes, static_cast<std::size_t>(count)) == count;
    }
    if (fromServer && alive) {
      const auto count = read(pair.server, bytes, sizeof bytes);
      alive = count > 0 && !pair.silent && write(pair.program, bytes, static_cast<std::size_t>(count)) == count;
    }
    if (!alive) Close(pair);
    return alive;
  }

  sockaddr_in target_;
  int listener_ = -1;
  std::string port_;
  std::atomic<bool> over_ = false, answer_ = false, unplugged_ = false;
  std::atomic<int> due_ = 0, parcels_ = 0;
  std::vector<Pair> pairs_;
  std::thread thread_;
};

}  // namespace tarvolinex

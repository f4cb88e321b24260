#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "bench/roundtrip/Clients.h"
#include "bench/roundtrip/Exchange.h"

namespace bench {

namespace {

int Connect(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof(address.sun_path)) GiveUp("path too long for a socket: " + path);
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
    GiveUp("cannot connect to " + path);
  }
  return connection;
}

class RawClient final : public LoadClient {
 public:
  RawClient(const std::string& path, ClientLog& log) : log_(log), connection_(Connect(path)) {}
  ~RawClient() override { close(connection_); }

  void Start() override {
    thread_ = std::thread([this] {
      while (!log_.Stopped()) Ask();
    });
  }

  void Join() override { thread_.join(); }

 private:
  void Ask() {
    log_.Sending();
    if (write(connection_, request_.data(), request_.size()) != static_cast<ssize_t>(request_.size())) {
      GiveUp("cannot write to the ping-pong server");
    }
    for (std::size_t have = 0; have < answer_.size();) {
      const ssize_t count = read(connection_, answer_.data() + have, answer_.size() - have);
      if (count <= 0) GiveUp("the ping-pong server ended the connection");
      have += static_cast<std::size_t>(count);
    }
    log_.Answered();
  }

  ClientLog& log_;
  const int connection_;
  const std::string request_ = RequestFrame();
  std::string answer_ = AnswerFrame();
  std::thread thread_;
};

}  // namespace

std::unique_ptr<LoadClient> MakeRawClient(const std::string& socketPath, ClientLog& log) {
  return std::make_unique<RawClient>(socketPath, log);
}

void GiveUp(const std::string& why) {
  std::fprintf(stderr, "roundtrip_bench: %s\n", why.c_str());
  std::exit(EXIT_FAILURE);
}

}  // namespace bench

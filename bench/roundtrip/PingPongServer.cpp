// ping_pong_server SOCKET REQUEST-BYTES ANSWER-BYTES: for every REQUEST-BYTES bytes that come in on a connection sends
// ANSWER-BYTES back, from one thread, with epoll. The least that a server can do over this kind of socket.
#include <sys/epoll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>

namespace {

[[noreturn]] void GiveUp(const char* what) {
  std::perror(what);
  std::exit(EXIT_FAILURE);
}

int Listen(const char* path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, path, sizeof(address.sun_path) - 1);
  const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) GiveUp(path);
  if (listen(listener, SOMAXCONN) != 0) GiveUp("listen");
  return listener;
}

void Watch(int poll, int descriptor) {
  epoll_event event{};
  event.events = EPOLLIN;
  event.data.fd = descriptor;
  if (epoll_ctl(poll, EPOLL_CTL_ADD, descriptor, &event) != 0) GiveUp("epoll_ctl");
}

// Reads once, and answers every request that is complete. False when the connection has ended.
bool Serve(int connection, std::size_t requestBytes, const std::string& answer, std::size_t& have) {
  std::array<char, 4096> buffer{};
  const ssize_t count = read(connection, buffer.data(), buffer.size());
  if (count <= 0) return false;
  for (have += static_cast<std::size_t>(count); have >= requestBytes; have -= requestBytes) {
    if (write(connection, answer.data(), answer.size()) < 0) return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fprintf(stderr, "usage: ping_pong_server SOCKET REQUEST-BYTES ANSWER-BYTES\n");
    return 2;
  }
  const std::size_t requestBytes = std::strtoul(argv[2], nullptr, 10);
  const std::string answer(std::strtoul(argv[3], nullptr, 10), 'x');
  const int listener = Listen(argv[1]);
  const int poll = epoll_create1(EPOLL_CLOEXEC);
  Watch(poll, listener);
  std::puts("ready");
  std::fflush(stdout);

  std::map<int, std::size_t> connections;  // with the bytes of an incomplete request
  for (std::array<epoll_event, 64> events{};;) {
    const int count = epoll_wait(poll, events.data(), static_cast<int>(events.size()), -1);
    for (int i = 0; i < count; ++i) {
      const int ready = events[static_cast<std::size_t>(i)].data.fd;
      if (ready == listener) {
        Watch(poll, accept4(listener, nullptr, nullptr, SOCK_CLOEXEC));
      } else if (!Serve(ready, requestBytes, answer, connections[ready])) {
        close(ready);
        connections.erase(ready);
      }
    }
  }
}

// ipc_foreign_peer PIPE ID [SERVICE]: says hello asking for ID and then, if SERVICE is there, sends requests with the
// code 8 to that id for as long as they are taken. The exit status is that of the hub's answer; 100 without one.
#include <cstdlib>
#include <string>

#include "platform/text/WideText.h"
#include "tests/platform/ipc/RawPeer.h"

int main(int count, char** arguments) {
  if (count < 3) {
    return 101;
  }
  RawPeer peer(platform::ToWide(arguments[1]));
  peer.Send(Hello(std::atoi(arguments[2])));
  const auto answer = peer.Receive();
  if (count > 3) {
    const std::string request = TestFrame{.receiver = std::atoi(arguments[3]), .code = 8}.Bytes();
    while (peer.Write(request) == request.size()) {
    }
  }
  return answer ? answer->status : 100;
}

// ipc_foreign_peer PIPE ID: says hello asking for ID; the exit status is that of the hub's answer, 100 without one.
#include <array>
#include <asio/io_context.hpp>
#include <asio/read.hpp>
#include <asio/write.hpp>
#include <cstdlib>
#include <string>

#include "platform/ipc/PipeTransport.h"
#include "platform/text/WideText.h"
#include "tests/platform/ipc/TestFrame.h"

int main(int count, char** arguments) {
  if (count != 3) {
    return 101;
  }
  asio::io_context context;
  platform::ipc::Stream stream(context);
  const auto address = platform::ipc::ResolvePipe(platform::ToWide(arguments[1]));
  if (platform::ipc::ConnectToPipe(stream, address)) {
    return 102;
  }
  const std::string hello = Hello(std::atoi(arguments[2])).Bytes();
  std::string answer(35, '\0');
  asio::async_write(stream, asio::buffer(hello), [](const std::error_code&, std::size_t) {});
  asio::async_read(stream, asio::buffer(answer), [](const std::error_code&, std::size_t) {});
  context.run_for(std::chrono::seconds(10));
  const auto frame = TestFrame::Parse(answer.substr(4));
  return answer[0] == 31 && frame ? frame->status : 100;
}

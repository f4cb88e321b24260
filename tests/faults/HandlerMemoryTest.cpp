#include "platform/ipc/HandlerMemory.h"

#include <gtest/gtest.h>

#include <asio/io_context.hpp>
#include <asio/post.hpp>
#include <new>

#include "tests/support/AllocationFaults.h"

namespace {

using platform::ipc::HandlerMemory;
using platform::ipc::KeptIn;

class HandlerMemoryTest : public testing::Test {
 protected:
  void Post() {
    asio::post(context_, KeptIn(memory_, [this] { ++runs_; }));
  }

  HandlerMemory memory_;
  asio::io_context context_;
  int runs_ = 0;
};

TEST_F(HandlerMemoryTest, StartsOneOperationAfterTheOtherWithoutAnAllocation) {
  for (int round = 1; round <= 3; ++round) {
    support::AllocationFault noMemory(1);
    Post();
    EXPECT_FALSE(noMemory.Happened());
    noMemory.Stop();
    context_.restart();
    context_.run();
    EXPECT_EQ(runs_, round);
  }
}

TEST_F(HandlerMemoryTest, TakesTheMemoryOfASecondOperationFromTheHeap) {
  Post();
  {
    const support::AllocationFault noMemory(1);
    EXPECT_THROW(Post(), std::bad_alloc);
  }
  Post();
  context_.run();
  EXPECT_EQ(runs_, 2);
}

TEST_F(HandlerMemoryTest, TakesWhatIsLargerThanItsRoomFromTheHeap) {
  void* const small = memory_.Take(128);
  memory_.Return(small);
  void* const large = memory_.Take(129);
  EXPECT_NE(large, small);
  EXPECT_EQ(memory_.Take(128), small);
  memory_.Return(large);
  memory_.Return(small);
  EXPECT_EQ(memory_.Take(128), small);
}

}  // namespace

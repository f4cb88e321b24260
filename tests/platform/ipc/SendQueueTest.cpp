#include "platform/ipc/SendQueue.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using platform::ipc::Frame;
using platform::ipc::SendQueue;

TEST(SendQueueLimit, IsChargedBeforeAnythingIsTaken) {
  SendQueue queue;
  const std::string bytes(100, 'x');
  EXPECT_TRUE(queue.Add(std::span(bytes), 100));
  EXPECT_EQ(queue.WaitingBytes(), 100U);
  EXPECT_FALSE(queue.Add(std::span(bytes).first(1), 100));
  EXPECT_EQ(queue.WaitingBytes(), 100U);
  EXPECT_TRUE(queue.Add(std::span(bytes).first(1), 101));
  EXPECT_EQ(queue.WaitingBytes(), 101U);
}

TEST(SendQueueLimit, CountsAFrameAsItIsEncoded) {
  SendQueue queue;
  EXPECT_FALSE(queue.Add(Frame{.name = "ab"}, 36));
  EXPECT_TRUE(queue.Empty());
  EXPECT_TRUE(queue.Add(Frame{.name = "ab"}, 37));
  EXPECT_EQ(queue.WaitingBytes(), 37U);
}

}  // namespace

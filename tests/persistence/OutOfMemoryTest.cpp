// A memory database for which there is no memory. Replaces this program's operator new for nothrow, so that one such
// request can be refused.
#include <new>

#include "tests/persistence/EngineTest.h"

namespace {

bool g_refuseNext = false;

}  // namespace

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  if (g_refuseNext) {
    g_refuseNext = false;
    return nullptr;
  }
  try {
    return operator new(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

namespace {

TEST_F(EngineTest, InitFailsWithoutMemoryForTheDatabase) {
  NotesEngine engine;
  g_refuseNext = true;

  EXPECT_FALSE(engine.InitDb(engine.content));

  EXPECT_FALSE(g_refuseNext);
  EXPECT_EQ(engine.content.dbContentPtr, nullptr);
  EXPECT_EQ(log_.Lines(), Lines{"4 [KTData] dbContentPtr is nullptr.(KT::DbEngine::InitDb)"});
}

TEST_F(EngineTest, InitReleasesTheOldDatabaseBeforeItOpensAnother) {
  NotesEngine engine;
  ASSERT_TRUE(engine.InitDb(engine.content));
  log_.Take();
  g_refuseNext = true;

  EXPECT_FALSE(engine.InitDb(engine.content));

  EXPECT_EQ(engine.content.dbContentPtr, nullptr);
  EXPECT_EQ(log_.Lines(), (Lines{"3 [KTData] dbContentPtr is not nullptr.(KT::DbEngine::InitDb)",
                                 "4 [KTData] dbContentPtr is nullptr.(KT::DbEngine::InitDb)"}));
}

}  // namespace

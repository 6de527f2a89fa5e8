#include <gtest/gtest.h>

#include <tslbl/closed/common/ComponentRegistry.h>
#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using namespace TslCommon;

struct Engine : IComponent {
  explicit Engine(int givenKind = 0) : kind(givenKind) {}
  int kind;
};
struct OtherEngine : IComponent {};

ComponentRegistry::Factory MakeEngine(int kind) {
  return [kind] { return std::make_unique<Engine>(kind); };
}

// The code of the ComError that `action` raises; 0 without one.
template <class Action>
std::uint32_t Failure(Action action) {
  try {
    action();
  } catch (const ComError& e) {
    return e.code;
  }
  return 0;
}

TEST(ComponentRegistry, MakesWhatIsRegistered) {
  ComponentRegistry registry;
  registry.Register("engine", MakeEngine(3));
  EXPECT_TRUE(registry.IsRegistered("engine"));
  EXPECT_EQ(registry.CreateAs<Engine>("engine")->kind, 3);
}

TEST(ComponentRegistry, MakesANewComponentEachTime) {
  ComponentRegistry registry;
  registry.Register("engine", MakeEngine(3));
  EXPECT_NE(registry.Create("engine"), registry.Create("engine"));
}

TEST(ComponentRegistry, LaterRegistrationReplacesTheEarlier) {
  ComponentRegistry registry;
  registry.Register("engine", MakeEngine(1));
  registry.Register("engine", MakeEngine(2));
  EXPECT_EQ(registry.CreateAs<Engine>("engine")->kind, 2);
}

TEST(ComponentRegistry, AnEmptyFactoryTakesTheClassOut) {
  ComponentRegistry registry;
  registry.Register("engine", MakeEngine(1));
  registry.Register("engine", nullptr);
  EXPECT_FALSE(registry.IsRegistered("engine"));
  EXPECT_EQ(Failure([&] { registry.Create("engine"); }), ComError::kNotRegistered);
}

TEST(ComponentRegistry, AnUnknownClassCannotBeCreated) {
  EXPECT_EQ(Failure([] { ComponentRegistry().Create("none"); }), ComError::kNotRegistered);
}

TEST(ComponentRegistry, AFactoryThatMakesNothingCannotCreate) {
  ComponentRegistry registry;
  registry.Register("engine", [] { return std::unique_ptr<IComponent>(); });
  EXPECT_EQ(Failure([&] { registry.Create("engine"); }), ComError::kNotRegistered);
}

TEST(ComponentRegistry, AComponentWithoutTheInterfaceIsRefused) {
  ComponentRegistry registry;
  registry.Register("engine", [] { return std::make_unique<OtherEngine>(); });
  EXPECT_EQ(Failure([&] { registry.CreateAs<Engine>("engine"); }), ComError::kNoInterface);
}

TEST(ComponentRegistry, PassesOnWhatAFactoryThrows) {
  ComponentRegistry registry;
  registry.Register("engine", []() -> std::unique_ptr<IComponent> { throw ComError{0x80004005}; });
  EXPECT_EQ(Failure([&] { registry.Create("engine"); }), 0x80004005);
}

TEST(ComponentRegistry, AFactoryMayUseTheRegistry) {
  ComponentRegistry registry;
  registry.Register("inner", MakeEngine(5));
  registry.Register("outer", [&registry] { return registry.Create("inner"); });
  EXPECT_EQ(registry.CreateAs<Engine>("outer")->kind, 5);
}

TEST(ComponentRegistry, IsOneForTheProcess) {
  EXPECT_EQ(&ComponentRegistry::Instance(), &ComponentRegistry::Instance());
}

TEST(ComError, PassesAHandlerForStandardExceptions) {
  EXPECT_EQ(Failure([] {
              try {
                throw ComError{7};
              } catch (const std::exception&) {
              }
            }),
            7u);
}

TEST(ComponentRegistryThreads, MayRegisterAndCreateAtTheSameTime) {
  ComponentRegistry registry;
  registry.Register("shared", MakeEngine(1));
  std::atomic<int> made = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t)
    threads.emplace_back([&registry, &made, t] {
      for (int i = 0; i < 200; ++i) {
        registry.Register("own" + std::to_string(t), MakeEngine(i));
        registry.Register("shared", MakeEngine(i));
        made += registry.CreateAs<Engine>("shared") && registry.IsRegistered("shared") ? 1 : 0;
      }
    });
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(made, 800);
}

}  // namespace

#include "tests/crash/Choices.h"

namespace crash {

namespace {

using Choice = PowerCut::Choice;
using Visit = std::function<void(const Choice&)>;

void VisitAll(std::size_t undecided, const Visit& visit) {
  for (std::size_t number = 0; number < std::size_t{1} << undecided; ++number) {
    Choice choice(undecided);
    for (std::size_t i = 0; i < undecided; ++i) {
      choice[i] = ((number >> i) & 1) != 0;
    }
    visit(choice);
  }
}

void VisitRegular(std::size_t undecided, const Visit& visit) {
  visit(Choice(undecided, false));
  for (std::size_t i = 0; i < undecided; ++i) {
    Choice single(undecided, false);
    single[i] = true;
    visit(single);
    single.flip();
    visit(single);
    Choice beginning(undecided, false);
    std::fill_n(beginning.begin(), i + 1, true);
    visit(beginning);
  }
}

// A part of the changes, from hardly any to nearly all.
void VisitRandom(std::size_t undecided, std::size_t count, std::mt19937& random, const Visit& visit) {
  for (std::size_t number = 0; number < count; ++number) {
    std::bernoulli_distribution isThere(std::uniform_real_distribution(0.05, 0.95)(random));
    Choice choice(undecided);
    for (std::size_t i = 0; i < undecided; ++i) {
      choice[i] = isThere(random);
    }
    visit(choice);
  }
}

}  // namespace

void ForEachChoice(const PowerCut& cut, const Effort& effort, std::mt19937& random, const Visit& visit) {
  const auto visitPossible = [&](const Choice& choice) {
    if (cut.IsPossible(choice)) {
      visit(choice);
    }
  };
  const std::size_t undecided = cut.Undecided();
  if (undecided < 60 && std::size_t{1} << undecided <= effort.all) {
    VisitAll(undecided, visitPossible);
  } else {
    VisitRegular(undecided, visitPossible);
    VisitRandom(undecided, effort.random, random, visitPossible);
  }
}

}  // namespace crash

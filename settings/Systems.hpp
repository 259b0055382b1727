// The five phonetic systems, in the order of the PinyinSystems preference,
// of the result blocks, of the rows of the preferences list and of the
// blocks of an exported page.
//
//   SystemSet systems("10010");  // Hanyu Pinyin and Wade-Giles
//   systems.Has(System::kWadeGiles);   // true
//   systems.PrefValue();               // "10010"
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace quill {

enum class System {
  kHanyuPinyin,
  kZhuyin1,
  kZhuyin2,
  kWadeGiles,
  kTongyongPinyin,
};

inline constexpr std::size_t kSystemCount = 5;

// The systems in their order, for loops over all five.
inline constexpr std::array<System, kSystemCount> kAllSystems{
    System::kHanyuPinyin, System::kZhuyin1, System::kZhuyin2,
    System::kWadeGiles, System::kTongyongPinyin};

// The system's place in that order, from 0.
constexpr std::size_t Index(System system) {
  return static_cast<std::size_t>(system);
}

// One value per system, reached by the system.
template <typename T>
struct PerSystem {
  std::array<T, kSystemCount> values{};

  constexpr T& operator[](System system) { return values[Index(system)]; }
  constexpr const T& operator[](System system) const {
    return values[Index(system)];
  }
};

// The systems that are on.
class SystemSet {
 public:
  // All five on.
  constexpr SystemSet() { on_.fill(true); }

  // From the text of PinyinSystems: a system is on unless its character is
  // "0", so a text too short to reach it (the empty one too) leaves it on.
  // Characters are bytes here; any byte but '0' means on.
  SystemSet(std::string_view PinyinSystems) {
    for (std::size_t i = 0; i < kSystemCount; ++i) {
      on_[i] = i >= PinyinSystems.size() || PinyinSystems[i] != '0';
    }
  }
  // Not explicit: a set is written as its text, SystemSet s = "01000".
  SystemSet(const char* PinyinSystems)
      : SystemSet(std::string_view(PinyinSystems)) {}
  SystemSet(const std::string& PinyinSystems)
      : SystemSet(std::string_view(PinyinSystems)) {}

  constexpr bool Has(System system) const { return on_[Index(system)]; }
  constexpr void Set(System system, bool on) { on_[Index(system)] = on; }
  constexpr bool None() const {
    for (bool on : on_) {
      if (on) return false;
    }
    return true;
  }

  // The text of PinyinSystems: five characters "1" or "0".
  std::string PrefValue() const {
    std::string text;
    for (bool on : on_) text += on ? '1' : '0';
    return text;
  }

  constexpr bool operator==(const SystemSet&) const = default;

 private:
  std::array<bool, kSystemCount> on_{};
};

}  // namespace quill

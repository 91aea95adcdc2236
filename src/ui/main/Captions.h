// What labels read before the organisation's own words are known, and how they read with them.
#pragma once

#include <array>
#include <string>

#include "controls/Controls.h"
#include "platform/text/Translation.h"

namespace tarvolinex {

struct LabelWords {
  const char* caption;
  const char* own = "";
};

inline std::string OwnWordsTag(const char* own) {
  return *own ? std::string("ALAIS=") + own : std::string();
}

inline void SetWords(Label& label, const LabelWords& words) {
  label.SetCaption(Tr(words.caption));
  label.SetTag(OwnWordsTag(words.own));
}

template <std::size_t N>
void SetWords(const ControlArray<Label>& labels, const std::array<LabelWords, N>& words) {
  for (std::size_t i = 0; i < N; ++i) SetWords(labels(labels.First() + static_cast<int>(i)), words[i]);
}

// A label beside a field that stands for a column.
struct BoundField {
  LabelWords words;
  const char* tag;
};

}  // namespace tarvolinex

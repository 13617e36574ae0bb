#include "tests/fuzz/RecordReference.h"

#include <algorithm>

namespace EventSystemTest {
namespace {

struct Field {
  std::string name;
  std::string text;
};
using Fields = std::optional<std::vector<Field>>;

// One automaton for both forms.
class Splitter {
 public:
  explicit Splitter(bool named) : m_state(named ? State::kName : State::kStart), m_named(named) {}

  Fields split(const std::string& text) {
    for (const char c : text) {
      if (!take(c)) return std::nullopt;
    }
    if (m_state == State::kName || m_state == State::kQuoted) return std::nullopt;
    m_fields.push_back(m_field);
    return m_fields;
  }

 private:
  enum class State { kName, kStart, kPlain, kQuoted, kAfterQuote };

  bool take(char c) {
    switch (m_state) {
      case State::kName:
        if (c == '=') {
          m_state = State::kStart;
        } else {
          m_field.name += c;
        }
        return c != ',' && c != '"';
      case State::kQuoted:
        if (c == '"') {
          m_state = State::kAfterQuote;
        } else {
          m_field.text += c;
        }
        return true;
      case State::kAfterQuote:
        if (c != '"') return c == ',' && endField();
        m_field.text += c;
        m_state = State::kQuoted;
        return true;
      case State::kStart:
      case State::kPlain:
        return takePlain(c);
    }
    return false;
  }

  bool takePlain(char c) {
    if (c == ',') return endField();
    if (c == '"') {
      const bool opens = m_state == State::kStart;
      m_state = State::kQuoted;
      return opens;
    }
    m_field.text += c;
    m_state = State::kPlain;
    return true;
  }

  bool endField() {
    m_fields.push_back(m_field);
    m_field = {};
    m_state = m_named ? State::kName : State::kStart;
    return true;
  }

  State m_state;
  bool m_named;
  Field m_field;
  std::vector<Field> m_fields;
};

// Whether the digits, without leading zeros, are a number up to `most`.
bool isAtMost(const std::string& digits, const std::string& most) {
  return digits.size() < most.size() || (digits.size() == most.size() && digits <= most);
}

std::optional<std::string> number(const std::string& text, int bits) {
  const bool minus = text.starts_with('-');
  std::string digits = text.substr(minus ? 1 : 0);
  if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos) {
    return std::nullopt;
  }
  digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size() - 1));
  const std::string most = bits == 32 ? (minus ? "2147483648" : "2147483647")
                                      : (minus ? "9223372036854775808" : "9223372036854775807");
  if (!isAtMost(digits, most)) return std::nullopt;
  return minus && digits != "0" ? "-" + digits : digits;
}

bool put(ReferenceRow& row, const ReferenceColumn& column, const std::string& text) {
  const auto value = column.bits == 0 ? std::make_optional(text) : number(text, column.bits);
  return value && row.emplace(column.name, *value).second;
}

bool putNamed(ReferenceRow& row, const ReferenceTable& table, const Field& field) {
  const auto column = std::find_if(table.begin(), table.end(), [&](const ReferenceColumn& one) {
    return one.name == field.name;
  });
  return column != table.end() && put(row, *column, field.text);
}

// A name comes first, and an equals sign behind it.
bool isNamed(const std::string& text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '=') return i > 0;
    if (text[i] == ',' || text[i] == '"') return false;
  }
  return false;
}

}  // namespace

std::optional<ReferenceRow> referenceAssignments(const ReferenceTable& table,
                                                 const std::string& text) {
  const Fields fields = Splitter(true).split(text);
  if (!fields) return std::nullopt;
  ReferenceRow row;
  for (const Field& field : *fields) {
    if (!putNamed(row, table, field)) return std::nullopt;
  }
  return row;
}

std::optional<ReferenceRow> referenceRecord(const ReferenceTable& table, const std::string& text) {
  if (isNamed(text)) {
    const auto row = referenceAssignments(table, text);
    if (!row) return std::nullopt;
    for (const ReferenceColumn& column : table) {
      if (!column.mayBeMissing && !row->contains(column.name)) return std::nullopt;
    }
    return row;
  }
  const Fields fields = Splitter(false).split(text);
  if (!fields || fields->size() != table.size()) return std::nullopt;
  ReferenceRow row;
  for (std::size_t i = 0; i < table.size(); ++i) {
    if (!put(row, table[i], (*fields)[i].text)) return std::nullopt;
  }
  return row;
}

std::optional<ReferenceRow> referenceFilter(const ReferenceTable& table, const std::string& text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos) return std::nullopt;
  Field field{text.substr(0, equals), text.substr(equals + 1)};
  if (field.text.starts_with('"')) {
    const Fields quoted = Splitter(false).split(field.text);
    if (!quoted || quoted->size() != 1) return std::nullopt;
    field.text = quoted->front().text;
  }
  ReferenceRow row;
  if (!putNamed(row, table, field)) return std::nullopt;
  return row;
}

}  // namespace EventSystemTest

#include "tests/eventd/load/Books.h"

#include <utility>

namespace EventSystemTest {

void Books::acknowledged(const std::string& text, unsigned long id) {
  const std::lock_guard lock(m_mutex);
  m_entries[text].acknowledgedId = id;
}

void Books::consumed(const std::string& text, unsigned long id) {
  const std::lock_guard lock(m_mutex);
  Entry& entry = m_entries[text];
  if (entry.consumedId != 0 && entry.consumedId != id) entry.doubled = true;
  entry.consumedId = id;
}

void Books::wrong(std::string what) {
  const std::lock_guard lock(m_mutex);
  m_wrong.push_back(std::move(what));
}

Books::Balance Books::balance() const {
  const std::lock_guard lock(m_mutex);
  Balance balance;
  balance.wrong = m_wrong;
  for (const auto& [text, entry] : m_entries) {
    if (entry.acknowledgedId != 0) ++balance.acknowledged;
    if (entry.consumedId != 0) ++balance.consumed;
    if (entry.consumedId == 0) ++balance.lost;
    if (entry.acknowledgedId == 0) ++balance.unknown;
    if (entry.doubled) ++balance.doubled;
    if (entry.acknowledgedId != 0 && entry.consumedId != 0 &&
        entry.acknowledgedId != entry.consumedId) {
      balance.wrong.push_back(text + " was acknowledged as " +
                              std::to_string(entry.acknowledgedId) + " and read as " +
                              std::to_string(entry.consumedId));
    }
  }
  return balance;
}

}  // namespace EventSystemTest

// Records that do not fit: an event is stored whole or refused aloud, whatever character the cut
// falls on.

#include "DatabaseStoreTest.h"

namespace EventSystemTest {
namespace {

constexpr std::size_t kRecordRoom = 2047;    // characters of a record of table "events"
constexpr std::size_t kDSRecordRoom = 1023;  // of table "dsevents"

std::string escaped(const std::string& text) {
  std::string field = "\"";
  for (const char c : text) field += c == '"' ? std::string("\"\"") : std::string(1, c);
  return field + "\"";
}

// Writes texts into both stores and looks at the records that reach the database.
class RecordLength : public DatabaseStoreTest<OrbDBEventStorage> {
 protected:
  void SetUp() override {
    DatabaseStoreTest::SetUp();
    build();
    dsStore = std::make_unique<OrbDBDSEventStorage>();
  }
  void TearDown() override {
    dsStore.reset();
    DatabaseStoreTest::TearDown();
  }

  // The record of the last addRecord() on that table.
  static std::string handedRecord(const std::string& table) {
    const std::string start = "addRecord(" + table + ", no key, 0, ";
    std::string record;
    for (const std::string& call : host().callsNamed({"addRecord"})) {
      if (call.compare(0, start.size(), start) == 0) {
        record = call.substr(start.size(), call.size() - start.size() - 1);
      }
    }
    return record;
  }

  // What must be true of a record that came out of `whole`, the event's complete record.
  void check(const std::string& table, const std::string& whole, std::size_t room, int result,
             unsigned long id, const std::string& text) {
    const std::string record = handedRecord(table);
    FakeTable& rows = host().table(table);
    if (whole.size() <= room) {
      EXPECT_EQ(0, result);
      EXPECT_EQ(whole, record);
      ASSERT_TRUE(rows.has(std::to_string(id)));
      EXPECT_EQ(text, rows.value(std::to_string(id), "eventstring"));
      return;
    }
    EXPECT_EQ(4, result);
    EXPECT_FALSE(rows.has(std::to_string(id)));
    EXPECT_LE(record.size(), room);
    EXPECT_EQ(whole.substr(0, record.size()), record);
    EXPECT_TRUE(endsInsideQuotes(record)) << record.substr(record.size() - 20);
    if (endsInsideQuotes(whole.substr(0, room))) {
      EXPECT_EQ(room, record.size());
    }
    EXPECT_EQ(error(4,
                    "%s Failed to record the new event to the events table in OrbDB. DB "
                    "status:%d  Event String:%s",
                    "writeEvent", 22, text.c_str()),
              host().log().back());
  }

  void writeGlobal(const std::string& text) {
    TextEvent event(text);
    host().clearCalls();
    const int result = store->writeEvent(&event);
    const std::string id = std::to_string(event.getId());
    check("events", id + "," + id + ",5,1700000000," + escaped(text), kRecordRoom, result,
          event.getId(), text);
  }

  void writeDS(const std::string& text, unsigned int dsid) {
    TextEvent event(text);
    host().clearCalls();
    const int result = dsStore->writeEvent(&event, dsid);
    const std::string id = std::to_string(event.getId());
    check("dsevents",
          id + "," + id + ",5,1700000000," + escaped(text) + "," +
              std::to_string(static_cast<int>(dsid)),
          kDSRecordRoom, result, event.getId(), text);
  }

  std::unique_ptr<OrbDBDSEventStorage> dsStore;
};

TEST_F(RecordLength, AGlobalRecordIsWholeUpTo2047CharactersAndRefusedAbove) {
  for (std::size_t length = 2010; length <= 2047; ++length) {
    writeGlobal(std::string(length, 'x'));
  }
}

TEST_F(RecordLength, AGlobalRecordIsNotCutBetweenTheHalvesOfADoubledQuote) {
  for (std::size_t before = 1990; before <= 2040; ++before) {
    writeGlobal(std::string(before, 'x') + "\"");
    writeGlobal(std::string(before, 'x') + "\"\"\"yy");
    writeGlobal(std::string(before / 2, '"'));
  }
}

TEST_F(RecordLength, AGlobalRecordOfQuotesOnlyIsWholeOrRefused) {
  for (std::size_t quotes = 1000; quotes <= 1030; ++quotes) writeGlobal(std::string(quotes, '"'));
}

TEST_F(RecordLength, ADataSelectionRecordIsWholeUpTo1023CharactersAndRefusedAbove) {
  for (std::size_t length = 980; length <= 1010; ++length) {
    writeDS(std::string(length, 'x'), 3);
  }
}

TEST_F(RecordLength, ADataSelectionRecordIsNotCutInsideItsLastNumber) {
  for (std::size_t length = 980; length <= 1010; ++length) {
    writeDS(std::string(length, 'x'), 1234567890);
    writeDS(std::string(length, 'x'), 4294967295u);
  }
}

TEST_F(RecordLength, ADataSelectionRecordIsNotCutBetweenTheHalvesOfADoubledQuote) {
  for (std::size_t before = 970; before <= 1010; ++before) {
    writeDS(std::string(before, 'x') + "\"", 12345);
    writeDS(std::string(before, 'x') + "\"\"\"", 12345);
    writeDS(std::string(before / 2, '"'), 12345);
  }
}

TEST_F(RecordLength, TextThatLooksLikeFieldsStaysOneField) {
  writeGlobal("\",\"1,2,3\",\"");
  writeDS("\",9\n,\"\"", 3);
  for (std::size_t before = 980; before <= 1000; ++before) {
    writeDS(std::string(before, 'x') + "\",77,\"", 3);
  }
}

TEST_F(RecordLength, AnEventStringLongerThanItsBufferIsRefused) {
  TextEvent event(std::string(2500, 'x'));
  EXPECT_EQ(4, store->writeEvent(&event));
  EXPECT_TRUE(endsInsideQuotes(handedRecord("events")));
  EXPECT_EQ(kRecordRoom, handedRecord("events").size());
  EXPECT_EQ(4, dsStore->writeEvent(&event, 3));
  EXPECT_TRUE(endsInsideQuotes(handedRecord("dsevents")));
}

TEST_F(RecordLength, ATextThatCannotBeEscapedIsRefused) {
  Fault fault;
  fault.call = "QMStringEscapeA";
  fault.nth = 0;
  host().inject(fault);
  TextEvent event("short");
  EXPECT_EQ(4, store->writeEvent(&event));
  EXPECT_EQ(4, dsStore->writeEvent(&event, 3));
  EXPECT_EQ(0u, events().size());
  EXPECT_EQ(0u, dsevents().size());
}

}  // namespace
}  // namespace EventSystemTest

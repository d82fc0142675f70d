#include "adapters/sql/conninfo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "adapters/sql/open_store.h"

namespace orvane::test {
namespace {

using testing::Optional;

// As the server's documentation has them (PostgreSQL 15, 34.1.1).
TEST(ConninfoText, IsWordsOrAUri) {
  EXPECT_THAT(
      ConninfoOf("host=localhost port=5432 dbname=mydb connect_timeout=10"),
      Optional(Conninfo{{"host", "localhost"}, {"port", "5432"}, {"dbname", "mydb"}, {"connect_timeout", "10"}}));
  EXPECT_THAT(
      ConninfoOf(R"( dbname = 'my db'  password='it\'s \\ ;here' user=a\ b options='')"),
      Optional(Conninfo{{"dbname", "my db"}, {"password", R"(it's \ ;here)"}, {"user", "a b"}, {"options", ""}}));
  EXPECT_THAT(ConninfoOf("//other:pa%3Ass@localhost:5433/otherdb?connect_timeout=10&application_name=my%20app"),
              Optional(Conninfo{{"host", "localhost"},
                                {"port", "5433"},
                                {"user", "other"},
                                {"password", "pa:ss"},
                                {"dbname", "otherdb"},
                                {"connect_timeout", "10"},
                                {"application_name", "my app"}}));
  EXPECT_THAT(ConninfoOf("///mydb?host=/var/run/pg"),
              Optional(Conninfo{{"dbname", "mydb"}, {"host", "/var/run/pg"}}));
  EXPECT_THAT(ConninfoOf(""), Optional(Conninfo{}));
}

TEST(ConninfoText, IsNothingElse) {
  for (const char* const text : {"localhost", "host=a b", "=a", "HOST=a", "host='a", "ho-st=a", "//[::/x"}) {
    EXPECT_EQ(ConninfoOf(text), std::nullopt) << text;
  }
  EXPECT_EQ(ConninfoOf(std::string_view("host=a\0b", 8)), std::nullopt);
}

TEST(ConninfoText, IsNamedWithoutItsPasswordAndWaitedForNotForEver) {
  Conninfo conninfo = *ConninfoOf("//u:secret@h:5433/d?connect_timeout=7");
  EXPECT_EQ(NameOf(conninfo), "postgresql:host=h port=5433 dbname=d");
  BoundWaiting(conninfo, 5000);
  EXPECT_EQ(conninfo.at("connect_timeout"), "7") << "as it was asked for";
  EXPECT_EQ(conninfo.at("tcp_user_timeout"), "5000");
}

TEST(StoreText, IsOneOfTwoKinds) {
  EXPECT_EQ(FaultOfStoreText("sqlite:/var/lib/orvane/records.sqlite"), "");
  EXPECT_EQ(FaultOfStoreText("postgresql:host=/tmp dbname=records"), "");
  EXPECT_EQ(FaultOfStoreText("postgresql://orvane@db.line/records"), "");
  EXPECT_EQ(FaultOfStoreText("sqlite:"), "sqlite: needs the path of a file behind it.");
  EXPECT_EQ(FaultOfStoreText("postgresql:records"),
            "postgresql: needs words like host=... dbname=... behind it, or //user@host/dbname.");
  for (const char* const text : {"", "none", "/var/lib/records.sqlite", "mysql:host=a", "SQLITE:a"}) {
    EXPECT_EQ(FaultOfStoreText(text),
              "A store is sqlite:PATH or postgresql:CONNINFO, not \"" + std::string(text) + "\".");
    EXPECT_THROW(static_cast<void>(OpenStore(text)), StoreFault);
  }
}

}  // namespace
}  // namespace orvane::test

#include "adapters/sql/conninfo.h"
#include "records/store_test.h"

namespace orvane::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class ServerFaults : public StoreTest {};
INSTANTIATE_TEST_SUITE_P(On, ServerFaults, testing::Values("Postgresql"), NameOfEngine);

TEST_P(ServerFaults, AServerThatGoesIsSaidAndTheStoreIsBackWithIt) {
  const auto store = Open();
  ASSERT_TRUE(store->Finish(SmallRecord(1)));
  Server()->Stop();
  for (int attempt = 0; attempt < 2; ++attempt) {
    EXPECT_THAT(FaultOf([&] { store->Finish(SmallRecord(2)); }), StartsWith("The store postgresql:host=/"));
  }
  Server()->Start();
  EXPECT_TRUE(store->Finish(SmallRecord(2)));
  EXPECT_EQ(store->Load(IdOf(1)), SmallRecord(1));
  EXPECT_EQ(store->Load(IdOf(2)), SmallRecord(2));
}

TEST_P(ServerFaults, ATableThatSomebodyHoldsIsWaitedForAndNotForEver) {
  const auto store = Open({.patienceMs = 200});
  const auto other = Open();
  SqlConnection holder(PostgresqlEngine(),
                       {Text(),
                        [&](QSqlDatabase& database) {
                          const auto conninfo = *ConninfoOf(Text().substr(Text().find(':') + 1));
                          database.setHostName(QtText(conninfo.at("host")));
                          database.setUserName(QtText(conninfo.at("user")));
                          database.setDatabaseName(QtText(conninfo.at("dbname")));
                        },
                        [] {}, [] { return false; }},
                       0, [](SqlConnection&) {});
  {
    const SqlTransaction held(holder);
    holder.Run("LOCK TABLE run IN EXCLUSIVE MODE");
    EXPECT_THAT(FaultOf([&] { store->Finish(SmallRecord(1)); }), HasSubstr(" is held by another program: "));
  }
  EXPECT_TRUE(store->Finish(SmallRecord(1)));
}

TEST_P(ServerFaults, WhatIsNotThereIsSaidWithoutAPassword) {
  EXPECT_THAT(FaultOf([&] { static_cast<void>(OpenStore(Text() + "_none password=geheim")); }),
              AllOf(HasSubstr("does not exist"), Not(HasSubstr("geheim"))));
  EXPECT_THAT(
      FaultOf([&] { static_cast<void>(OpenStore("postgresql:host=" + folder_.Path() + " password=geheim")); }),
      AllOf(HasSubstr("No such file or directory"), Not(HasSubstr("geheim"))));
}

TEST_P(ServerFaults, AUriLeadsToTheSameStore) {
  ASSERT_TRUE(Open()->Finish(SmallRecord(1)));
  const Conninfo conninfo = *ConninfoOf(Text().substr(Text().find(':') + 1));
  const std::string uri =
      "postgresql:///" + conninfo.at("dbname") + "?user=" + conninfo.at("user") + "&host=" + conninfo.at("host");
  EXPECT_EQ(OpenStore(uri)->Load(IdOf(1)), SmallRecord(1));
}

}  // namespace
}  // namespace orvane::test

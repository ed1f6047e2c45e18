#include "daemon/service/call_limits.h"

#include <map>
#include <utility>

namespace TALO::Wifid {

struct CallLimits::Connection {
  std::size_t calls = 0;
  bool isHere = true;
};

struct CallLimits::Tally {
  std::size_t calls = 0;
  std::map<uid_t, std::size_t> callsOfUsers;
  std::map<std::string, std::shared_ptr<Connection>> connections;  ///< that are here and have calls
};

class CallLimits::TakenPlace final : public Place {
 public:
  TakenPlace(std::shared_ptr<Tally> tally, std::string caller, uid_t user)
      : tally_(std::move(tally)), caller_(std::move(caller)), user_(user) {
    std::shared_ptr<Connection>& connection = tally_->connections[caller_];
    if (!connection) {
      connection = std::make_shared<Connection>();
    }
    connection_ = connection;
    ++connection_->calls;
    ++tally_->callsOfUsers[user_];
    ++tally_->calls;
  }
  TakenPlace(const TakenPlace&) = delete;
  TakenPlace& operator=(const TakenPlace&) = delete;
  ~TakenPlace() override {
    --tally_->calls;
    if (--tally_->callsOfUsers[user_] == 0) {
      tally_->callsOfUsers.erase(user_);
    }
    if (--connection_->calls == 0 && connection_->isHere) {
      tally_->connections.erase(caller_);
    }
  }

  bool CallerIsHere() const override { return connection_->isHere; }

 private:
  std::shared_ptr<Tally> tally_;
  std::string caller_;
  uid_t user_;
  std::shared_ptr<Connection> connection_;
};

namespace {

Refusal TooMany(const std::string& who, std::size_t limit) {
  return {ErrorCode::LimitReached, who + std::to_string(limit) +
                                       " calls that are not answered yet, no more are "
                                       "possible"};
}

}  // namespace

CallLimits::CallLimits() : tally_(std::make_shared<Tally>()) {}

Result<std::shared_ptr<const Place>> CallLimits::Enter(const std::string& caller, uid_t user) {
  const auto connection = tally_->connections.find(caller);
  if (connection != tally_->connections.end() && connection->second->calls >= kMaximumCallsOfCaller) {
    return TooMany("this caller has ", kMaximumCallsOfCaller);
  }
  const auto ofUser = tally_->callsOfUsers.find(user);
  if (ofUser != tally_->callsOfUsers.end() && ofUser->second >= kMaximumCallsOfUser) {
    return TooMany("user " + std::to_string(user) + " has ", kMaximumCallsOfUser);
  }
  if (tally_->calls >= kMaximumCalls) {
    return TooMany("the wifi daemon has ", kMaximumCalls);
  }
  return std::shared_ptr<const Place>(std::make_shared<TakenPlace>(tally_, caller, user));
}

void CallLimits::Leave(const std::string& caller) {
  const auto connection = tally_->connections.find(caller);
  if (connection != tally_->connections.end()) {
    connection->second->isHere = false;
    tally_->connections.erase(connection);
  }
}

}  // namespace TALO::Wifid

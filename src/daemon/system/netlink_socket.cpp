#include "daemon/system/netlink_socket.h"

#include "daemon/system/readable.h"

#include <sys/socket.h>

#include <linux/netlink.h>
#include <netlink/errno.h>
#include <netlink/handlers.h>
#include <netlink/msg.h>
#include <netlink/netlink.h>
#include <netlink/socket.h>

#include <cerrno>
#include <chrono>
#include <new>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace TALO::Wifid {

namespace {

constexpr int kMostTries = 5;

struct FreeCallbacks {
  void operator()(nl_cb* callbacks) const noexcept { nl_cb_put(callbacks); }
};
using Callbacks = std::unique_ptr<nl_cb, FreeCallbacks>;

using Clock = std::chrono::steady_clock;

/// What came so far.
struct Answer {
  std::uint32_t number = 0;  ///< of the question
  Clock::time_point deadline;
  Messages messages;
  bool changed = false;  ///< the list, while it was told
  bool late = false;     ///< what came after the deadline was left out
  bool whole = false;
  int error = 0;      ///< the kernel's, as errno
  std::string words;  ///< the kernel's own, where it has any
};

std::string BytesOf(const nlmsghdr* header) {
  return {reinterpret_cast<const char*>(header), header->nlmsg_len};
}

/// The first to see a message. Some may come without end, of one answer or of those before.
int OnAnything(nl_msg* message, void* self) {
  auto& answer = *static_cast<Answer*>(self);
  answer.late = Clock::now() >= answer.deadline;
  if (answer.late) {
    return NL_STOP;
  }
  return nlmsg_hdr(message)->nlmsg_seq == answer.number ? NL_OK : NL_SKIP;
}

int OnChangedList(nl_msg*, void* answer) {
  static_cast<Answer*>(answer)->changed = true;
  return NL_OK;
}

int OnMessage(nl_msg* message, void* answer) {
  static_cast<Answer*>(answer)->messages.push_back(BytesOf(nlmsg_hdr(message)));
  return NL_OK;
}

int OnAcknowledged(nl_msg*, void* answer) {
  static_cast<Answer*>(answer)->whole = true;
  return NL_STOP;
}

/// The end of a list says whether it was one.
int OnListEnd(nl_msg* message, void* self) {
  auto& answer = *static_cast<Answer*>(self);
  answer.whole = true;
  answer.error = -HeaderOf<int>(BytesOf(nlmsg_hdr(message)));
  return NL_STOP;
}

int OnError(sockaddr_nl*, nlmsgerr* error, void* self) {
  auto& answer = *static_cast<Answer*>(self);
  answer.whole = true;
  answer.error = -error->error;
  // The error is what the message begins with. Of the request it holds the header alone, see Connect().
  const auto* message =
      reinterpret_cast<const nlmsghdr*>(reinterpret_cast<const char*>(error) - NLMSG_HDRLEN);
  if ((message->nlmsg_flags & NLM_F_ACK_TLVS) != 0) {
    const std::string bytes = BytesOf(message);
    answer.words = Attributes(bytes, sizeof *error).Text(NLMSGERR_ATTR_MSG);
  }
  return NL_SKIP;
}

Callbacks CallbacksFor(Answer& answer) {
  Callbacks callbacks(nl_cb_alloc(NL_CB_DEFAULT));
  if (!callbacks || nl_cb_set(callbacks.get(), NL_CB_SEQ_CHECK, NL_CB_CUSTOM, OnAnything, &answer) < 0 ||
      nl_cb_set(callbacks.get(), NL_CB_DUMP_INTR, NL_CB_CUSTOM, OnChangedList, &answer) < 0 ||
      nl_cb_set(callbacks.get(), NL_CB_VALID, NL_CB_CUSTOM, OnMessage, &answer) < 0 ||
      nl_cb_set(callbacks.get(), NL_CB_ACK, NL_CB_CUSTOM, OnAcknowledged, &answer) < 0 ||
      nl_cb_set(callbacks.get(), NL_CB_FINISH, NL_CB_CUSTOM, OnListEnd, &answer) < 0 ||
      nl_cb_err(callbacks.get(), NL_CB_CUSTOM, OnError, &answer) < 0) {
    throw std::bad_alloc();
  }
  return callbacks;
}

SocketHandle Connect(int protocol) {
  SocketHandle socket(nl_socket_alloc());
  if (!socket) {
    throw std::bad_alloc();
  }
  // A message of a list may be longer than libnl's buffer.
  nl_socket_enable_msg_peek(socket.get());
  if (const int connected = nl_connect(socket.get(), protocol); connected < 0) {
    ThrowNetlink(connected);
  }
  if (const int set = nl_socket_set_nonblocking(socket.get()); set < 0) {
    ThrowNetlink(set);
  }
  const int descriptor = nl_socket_get_fd(socket.get());
  constexpr int kOn = 1;
  if (setsockopt(descriptor, SOL_NETLINK, NETLINK_CAP_ACK, &kOn, sizeof kOn) != 0 ||
      setsockopt(descriptor, SOL_NETLINK, NETLINK_EXT_ACK, &kOn, sizeof kOn) != 0) {
    throw std::system_error(errno, std::generic_category());
  }
  return socket;
}

void Send(nl_sock* socket, nl_msg* request, std::uint32_t number) {
  nlmsg_hdr(request)->nlmsg_seq = number;
  if (const int sent = nl_send_auto(socket, request); sent < 0) {
    ThrowNetlink(sent);
  }
}

Answer Receive(nl_sock* socket, std::uint32_t number, Clock::time_point deadline) {
  Answer answer;
  answer.number = number;
  answer.deadline = deadline;
  const Callbacks callbacks = CallbacksFor(answer);
  while (!answer.whole) {
    if (answer.late || !WaitUntilReadable(nl_socket_get_fd(socket), deadline)) {
      throw std::system_error(std::make_error_code(std::errc::timed_out));
    }
    const int received = nl_recvmsgs(socket, callbacks.get());
    if (received < 0 && received != -NLE_AGAIN && answer.error == 0) {
      ThrowNetlink(received);
    }
  }
  return answer;
}

}  // namespace

void FreeSocket::operator()(nl_sock* socket) const noexcept { nl_socket_free(socket); }

void ThrowNetlink(int failure) {
  throw std::system_error(EIO, std::generic_category(), nl_geterror(failure));
}

nl_sock* NetlinkSocket::Get() {
  if (!socket_) {
    socket_ = Connect(protocol_);
  }
  return socket_.get();
}

Messages NetlinkSocket::Ask(const NetlinkRequest& request) {
  std::optional<Clock::time_point> deadline;
  std::optional<Answer> answer;
  for (int tries = 0; tries < kMostTries && (!answer || answer->changed); ++tries) {
    try {
      Send(Get(), request.Get(), ++lastNumber_);
      deadline = deadline.value_or(Clock::now() + patience_);
      answer = Receive(Get(), lastNumber_, *deadline);
    } catch (const std::system_error&) {
      // What still comes on this one would be passed over, but takes time.
      socket_.reset();
      throw;
    }
  }
  if (answer->changed) {
    ThrowNetlink(-NLE_DUMP_INTR);
  }
  if (answer->error != 0) {
    const std::error_code code(answer->error, std::generic_category());
    throw answer->words.empty() ? std::system_error(code) : std::system_error(code, answer->words);
  }
  return std::move(answer->messages);
}

}  // namespace TALO::Wifid

#include "daemon/system/netlink_socket.h"

#include <sys/socket.h>
#include <sys/time.h>

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

/// What came so far.
struct Answer {
  Messages messages;
  bool whole = false;
  int error = 0;      ///< the kernel's, as errno
  std::string words;  ///< the kernel's own, where it has any
};

std::string BytesOf(const nlmsghdr* header) {
  return {reinterpret_cast<const char*>(header), header->nlmsg_len};
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
  if (!callbacks || nl_cb_set(callbacks.get(), NL_CB_VALID, NL_CB_CUSTOM, OnMessage, &answer) < 0 ||
      nl_cb_set(callbacks.get(), NL_CB_ACK, NL_CB_CUSTOM, OnAcknowledged, &answer) < 0 ||
      nl_cb_set(callbacks.get(), NL_CB_FINISH, NL_CB_CUSTOM, OnListEnd, &answer) < 0 ||
      nl_cb_err(callbacks.get(), NL_CB_CUSTOM, OnError, &answer) < 0) {
    throw std::bad_alloc();
  }
  return callbacks;
}

SocketHandle Connect(int protocol, std::chrono::milliseconds patience) {
  SocketHandle socket(nl_socket_alloc());
  if (!socket) {
    throw std::bad_alloc();
  }
  // A message of a list may be longer than libnl's buffer.
  nl_socket_enable_msg_peek(socket.get());
  if (const int connected = nl_connect(socket.get(), protocol); connected < 0) {
    ThrowNetlink(connected);
  }
  const int descriptor = nl_socket_get_fd(socket.get());
  constexpr int kOn = 1;
  constexpr int kMicrosecondsPerMillisecond = 1000;
  const auto whole = std::chrono::duration_cast<std::chrono::seconds>(patience);
  const timeval time{whole.count(), (patience - whole).count() * kMicrosecondsPerMillisecond};
  if (setsockopt(descriptor, SOL_SOCKET, SO_RCVTIMEO, &time, sizeof time) != 0 ||
      setsockopt(descriptor, SOL_NETLINK, NETLINK_CAP_ACK, &kOn, sizeof kOn) != 0 ||
      setsockopt(descriptor, SOL_NETLINK, NETLINK_EXT_ACK, &kOn, sizeof kOn) != 0) {
    throw std::system_error(errno, std::generic_category());
  }
  return socket;
}

/// Nothing where the list changed meanwhile.
std::optional<Answer> AskOnce(nl_sock* socket, nl_msg* request) {
  nlmsg_hdr(request)->nlmsg_seq = NL_AUTO_SEQ;
  if (const int sent = nl_send_auto(socket, request); sent < 0) {
    ThrowNetlink(sent);
  }
  Answer answer;
  const Callbacks callbacks = CallbacksFor(answer);
  while (!answer.whole) {
    const int received = nl_recvmsgs(socket, callbacks.get());
    if (received == -NLE_DUMP_INTR) {
      return std::nullopt;
    }
    if (received < 0 && answer.error == 0) {
      ThrowNetlink(received);
    }
  }
  return answer;
}

}  // namespace

void FreeSocket::operator()(nl_sock* socket) const noexcept { nl_socket_free(socket); }

void ThrowNetlink(int failure) {
  throw std::system_error(-failure == NLE_AGAIN ? ETIMEDOUT : EIO, std::generic_category(),
                          nl_geterror(failure));
}

nl_sock* NetlinkSocket::Get() {
  if (!socket_) {
    socket_ = Connect(protocol_, patience_);
  }
  return socket_.get();
}

Messages NetlinkSocket::Ask(const NetlinkRequest& request) {
  std::optional<Answer> answer;
  for (int tries = 0; tries < kMostTries && !answer; ++tries) {
    try {
      answer = AskOnce(Get(), request.Get());
    } catch (const std::system_error&) {
      // What still comes on this one is no answer to the next question.
      socket_.reset();
      throw;
    }
  }
  if (!answer) {
    ThrowNetlink(-NLE_DUMP_INTR);
  }
  if (answer->error != 0) {
    const std::error_code code(answer->error, std::generic_category());
    throw answer->words.empty() ? std::system_error(code) : std::system_error(code, answer->words);
  }
  return std::move(answer->messages);
}

}  // namespace TALO::Wifid

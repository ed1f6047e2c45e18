#pragma once

#include "daemon/model/result.h"
#include "daemon/radio/linux/kernel.h"

#include <string>
#include <system_error>
#include <type_traits>
#include <utility>

namespace TALO::Wifid {

/// What a question to the kernel, as in `&Kernel::GetWiphys`, answers; RadioFailed with the reason where it
/// cannot be asked.
template <typename Answer, typename... Arguments>
Result<Answer> AskKernel(const Kernel& kernel, Answer (Kernel::*question)(Arguments...) const,
                         const std::type_identity_t<Arguments>&... arguments) {
  try {
    return (kernel.*question)(arguments...);
  } catch (const std::system_error& error) {
    return Refusal{ErrorCode::RadioFailed, std::string("the kernel does not answer: ") + error.what()};
  }
}

/// Likewise, for who can do without: nothing where it cannot be asked.
template <typename Answer, typename... Arguments>
Answer HearFromKernel(const Kernel& kernel, Answer (Kernel::*question)(Arguments...) const,
                      const std::type_identity_t<Arguments>&... arguments) {
  auto answer = AskKernel(kernel, question, arguments...);
  return answer.Succeeded() ? std::move(answer.Value()) : Answer();
}

}  // namespace TALO::Wifid

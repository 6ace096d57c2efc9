#include "support/key_scene.h"

#include <optional>

#include "platform/linux/key_prompt.h"
#include "support/forked.h"

namespace ptick::testing {

int EndWithKey() {
  const std::optional<char> key = AskForKey(kPrompt, "kcq \r\n\x04\xe9");
  return key ? static_cast<unsigned char>(*key) : kNoKey;
}

bool PlayOnTerminal(const std::function<void(TerminalSession&)>& scene) {
  return CheckForked([&scene] {
           TerminalSession session;
           scene(session);
         }) == 0;
}

}  // namespace ptick::testing

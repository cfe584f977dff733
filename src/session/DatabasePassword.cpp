#include "session/DatabasePassword.h"

namespace tessaro {

std::string DatabasePassword() {
    return "silvercastles2071";
}

} // namespace tessaro

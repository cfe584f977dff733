#pragma once

namespace tessaro {

/// Makes the writable tree and seeds it from the templates.
void LocalizeApp();

} // namespace tessaro

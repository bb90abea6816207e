#pragma once

#include <optional>

/**
 * Whether a device of the registry says that it is connected by USB; nothing when it
 * does not say how. Any thread.
 */
std::optional<bool> IsConnectedByUsb(unsigned int nDevice);

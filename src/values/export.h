#pragma once

/// Marks what the shared libraries offer to other programs; everything else stays hidden.
#define TALO_WIFI_API __attribute__((visibility("default")))

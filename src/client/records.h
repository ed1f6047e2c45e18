#pragma once

/// Every record that crosses the bus. All are plain values: default-constructible, copyable, comparable,
/// owned by whoever holds them. Texts called raw bytes may hold any byte; all others are UTF-8.
#include "client/mac_filter_records.h"
#include "client/mesh_records.h"
#include "client/network_records.h"
#include "client/radio_records.h"
#include "client/service_records.h"
#include "client/station_records.h"

#pragma once

#include "daemon/model/capabilities.h"
#include "daemon/model/plan.h"
#include "daemon/model/result.h"
#include "daemon/radio/linux/control/channel_settings.h"
#include "daemon/radio/linux/present.h"

namespace TALO::Wifid {

/// The channel for a plan: its own or, where it is automatic, the first of these that can be used: that of
/// the radio's own station where it is bound to that (0 where not), the one in use, any. RadioFailed where
/// the country in force does not let access points use it, NotSupported where they would have to look out for
/// radars.
Result<ChannelSettings> ChooseChannel(const RadioPlan& plan, const RadioCapability& radio,
                                      const WiphyBand& band, const Present& present, int upstreamChannel = 0);

/// In dBm, for a percentage of the most that the country allows on a channel.
int PowerOf(int percent, const WiphyBand& band, int channel);

}  // namespace TALO::Wifid

#pragma once

#include <cstdint>

/// The enumerations that cross the bus. Their identifiers are what operators type and read, and their values
/// are shared with every daemon and client in the field: never rename, drop or reorder an enumerator.
namespace TALO::Wifi {

namespace Util {

/// A radio of the router, named by its band. `SmartConnect` stands for all radios as one.
enum class RadioFrequency : std::int32_t {
  Error = -1,
  SmartConnect,
  Band2_4GHz,
  Band5GHz,    ///< the only 5 GHz radio of a dual-band router
  Band5GHz_1,  ///< the lower 5 GHz radio of a tri-band router
  Band5GHz_2,  ///< the upper 5 GHz radio of a tri-band router
};

/// How a BSS authenticates its stations.
enum class SecurityMode : std::int32_t {
  Error = -1,
  Disabled,
  OWE,
  WEP,
  PersonalWPA,
  PersonalWPA2,
  PersonalWPA3,
  PersonalWPAMixed,
  PersonalWPA2_3Mixed,
  EnterpriseWPA,
  EnterpriseWPA2,
  EnterpriseWPA3,
  EnterpriseWPAMixed,
};

/// When the backhaul station looks for a parent.
enum class ScanType : std::int32_t {
  Error = -1,
  Disable,  ///< never
  Default,  ///< while it is not connected
  BestAP,   ///< also while connected, to roam to a better parent
};

/// Router models whose radios are known.
enum class SupportedModel : std::int32_t { Error = -1, Alder100, Birch200, Cedar300, Dune40 };

/// How a network's schedule is given.
enum class ScheduleMode : std::int32_t {
  Error = -1,
  ValidFor,    ///< on for a number of seconds from now, then off
  Customized,  ///< weekly on-times in local time
};

/// How much the daemon logs. `Error` is a level like the others, not a sentinel.
enum class LogLevel : std::int32_t { Error, Warning, Information, Debug };

}  // namespace Util

/// What a MAC filter profile does with the devices it lists.
enum class MACFilterAction : std::int32_t { Error = -1, Allow, Deny };

/// Regulatory country codes in alphabetical order; `MaxCountryCode` is their count, not a country.
enum class CountryCode : std::uint16_t {
  // clang-format off
  AD, AE, AF, AG, AI, AL, AM, AN, AR, AS, AT, AU, AW, AX, AZ, BA, BB, BD, BE, BF, BG, BH, BL, BM, BN, BO, BR, BS,
  BT, BY, BZ, CA, CF, CH, CI, CK, CL, CM, CN, CO, CR, CW, CX, CY, CZ, DE, DK, DM, DO, DZ, EC, EE, EG, ES, ET, FI,
  FK, FM, FO, FR, GB, GD, GE, GF, GG, GH, GI, GL, GP, GR, GT, GU, GY, HK, HM, HN, HR, HT, HU, ID, IE, IL, IM, IN,
  IQ, IS, IT, JE, JM, JO, JP, KE, KH, KN, KR, KW, KY, KZ, LB, LC, LI, LK, LS, LT, LU, LV, MA, MC, MD, ME, MF, MH,
  MK, MM, MN, MO, MP, MQ, MR, MS, MT, MU, MV, MW, MX, MY, NA, NC, NF, NG, NI, NL, NO, NP, NU, NZ, OM, PA, PE, PF,
  PG, PH, PK, PL, PM, PR, PT, PW, PY, QA, RE, RO, RS, RU, RW, SA, SE, SG, SH, SI, SJ, SK, SM, SN, SR, ST, SV, SX,
  TC, TD, TF, TG, TH, TN, TR, TT, TW, TZ, UA, UG, UM, US, UY, UZ, VA, VC, VE, VG, VI, VN, VU, WF, WS, YE, YT, ZA,
  ZW, MaxCountryCode,
  // clang-format on
};

}  // namespace TALO::Wifi

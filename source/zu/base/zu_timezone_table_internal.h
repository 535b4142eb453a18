// zu_timezone_table_internal.h: the zones by their names in the Windows registry, with their IANA names.
//
// Kept by hand after the table windowsZones of the Unicode CLDR (the release and order that the interface is bound to,
// not the newest).  A comma ends a name; "Pacific/Ponape Pacific/Kosrae" is one.  The first IANA name of a row is the
// one that its Windows name stands for.  Only the compiler reads these rows: zu_timezone.cpp has them in the form that
// is searched.
#pragma once

#include <string_view>

struct ZU___TIMEZONE_ROW {
    std::string_view windows;
    std::string_view iana;
};

// clang-format off
static constexpr ZU___TIMEZONE_ROW ZU___TIMEZONE_ROWS[] = {
    { "UTC-11", "Pacific/Pago_Pago,Pacific/Niue,Pacific/Midway,Etc/GMT+11" },
    { "Aleutian Standard Time", "America/Adak" },
    { "Hawaiian Standard Time", "Pacific/Honolulu,Pacific/Rarotonga,Pacific/Tahiti,Pacific/Johnston,Etc/GMT+10" },
    { "Marquesas Standard Time", "Pacific/Marquesas" },
    { "Alaskan Standard Time",
      "America/Anchorage,America/Juneau,America/Metlakatla,America/Nome,America/Sitka,America/Yakutat" },
    { "UTC-09", "Etc/GMT+9,Pacific/Gambier" },
    { "Pacific Standard Time (Mexico)", "America/Tijuana,America/Santa_Isabel" },
    { "UTC-08", "Etc/GMT+8,Pacific/Pitcairn" },
    { "Pacific Standard Time", "America/Los_Angeles,America/Vancouver,America/Dawson,America/Whitehorse,PST8PDT" },
    { "US Mountain Standard Time",
      "America/Phoenix,America/Dawson_Creek,America/Creston,America/Fort_Nelson,America/Hermosillo,"
      "Etc/GMT+7" },
    { "Mountain Standard Time (Mexico)", "America/Chihuahua,America/Mazatlan" },
    { "Mountain Standard Time",
      "America/Denver,America/Edmonton,America/Cambridge_Bay,America/Inuvik,America/Yellowknife,"
      "America/Ojinaga,America/Boise,MST7MDT" },
    { "Central America Standard Time",
      "America/Guatemala,America/Belize,America/Costa_Rica,Pacific/Galapagos,America/Tegucigalpa,"
      "America/Managua,America/El_Salvador,Etc/GMT+6" },
    { "Central Standard Time",
      "America/Chicago,America/Winnipeg,America/Rainy_River,America/Rankin_Inlet,America/Resolute,"
      "America/Matamoros,America/Indiana/Knox,America/Indiana/Tell_City,America/Menominee,"
      "America/North_Dakota/Beulah,America/North_Dakota/Center,America/North_Dakota/New_Salem,CST6CDT" },
    { "Easter Island Standard Time", "Pacific/Easter" },
    { "Central Standard Time (Mexico)",
      "America/Mexico_City,America/Bahia_Banderas,America/Merida,America/Monterrey" },
    { "Canada Central Standard Time", "America/Regina,America/Swift_Current" },
    { "SA Pacific Standard Time",
      "America/Bogota,America/Rio_Branco,America/Eirunepe,America/Coral_Harbour,America/Guayaquil,"
      "America/Jamaica,America/Cayman,America/Panama,America/Lima,Etc/GMT+5" },
    { "Eastern Standard Time (Mexico)", "America/Cancun" },
    { "Eastern Standard Time",
      "America/New_York,America/Nassau,America/Toronto,America/Iqaluit,America/Montreal,America/Nipigon,"
      "America/Pangnirtung,America/Thunder_Bay,America/Detroit,America/Indiana/Petersburg,"
      "America/Indiana/Vincennes,America/Indiana/Winamac,America/Kentucky/Monticello,America/Louisville,"
      "EST5EDT" },
    { "Haiti Standard Time", "America/Port-au-Prince" },
    { "Cuba Standard Time", "America/Havana" },
    { "US Eastern Standard Time", "America/Indianapolis,America/Indiana/Marengo,America/Indiana/Vevay" },
    { "Paraguay Standard Time", "America/Asuncion" },
    { "Atlantic Standard Time",
      "America/Halifax,Atlantic/Bermuda,America/Glace_Bay,America/Goose_Bay,America/Moncton,America/Thule" },
    { "Venezuela Standard Time", "America/Caracas" },
    { "Central Brazilian Standard Time", "America/Cuiaba,America/Campo_Grande" },
    { "SA Western Standard Time",
      "America/La_Paz,America/Antigua,America/Anguilla,America/Aruba,America/Barbados,"
      "America/St_Barthelemy,America/Kralendijk,America/Manaus,America/Boa_Vista,America/Porto_Velho,"
      "America/Blanc-Sablon,America/Curacao,America/Dominica,America/Santo_Domingo,America/Grenada,"
      "America/Guadeloupe,America/Guyana,America/St_Kitts,America/St_Lucia,America/Marigot,"
      "America/Martinique,America/Montserrat,America/Puerto_Rico,America/Lower_Princes,"
      "America/Port_of_Spain,America/St_Vincent,America/Tortola,America/St_Thomas,Etc/GMT+4" },
    { "Pacific SA Standard Time", "America/Santiago" },
    { "Turks And Caicos Standard Time", "America/Grand_Turk" },
    { "Newfoundland Standard Time", "America/St_Johns" },
    { "Tocantins Standard Time", "America/Araguaina" },
    { "E. South America Standard Time", "America/Sao_Paulo" },
    { "SA Eastern Standard Time",
      "America/Cayenne,Antarctica/Rothera,America/Fortaleza,America/Belem,America/Maceio,America/Recife,"
      "America/Santarem,Atlantic/Stanley,America/Paramaribo,Etc/GMT+3" },
    { "Argentina Standard Time",
      "America/Buenos_Aires,America/Argentina/La_Rioja,America/Argentina/Rio_Gallegos,"
      "America/Argentina/Salta,America/Argentina/San_Juan,America/Argentina/San_Luis,"
      "America/Argentina/Tucuman,America/Argentina/Ushuaia,America/Catamarca,America/Cordoba,America/Jujuy,"
      "America/Mendoza" },
    { "Greenland Standard Time", "America/Godthab" },
    { "Montevideo Standard Time", "America/Montevideo" },
    { "Magallanes Standard Time", "America/Punta_Arenas,Antarctica/Palmer" },
    { "Saint Pierre Standard Time", "America/Miquelon" },
    { "Bahia Standard Time", "America/Bahia" },
    { "UTC-02", "America/Noronha,Atlantic/South_Georgia,Etc/GMT+2" },
    { "Azores Standard Time", "Atlantic/Azores,America/Scoresbysund" },
    { "Cape Verde Standard Time", "Atlantic/Cape_Verde,Etc/GMT+1" },
    { "UTC", "America/Danmarkshavn,Etc/GMT,Etc/UTC" },
    { "Morocco Standard Time", "Africa/Casablanca,Africa/El_Aaiun" },
    { "GMT Standard Time",
      "Europe/London,Atlantic/Canary,Atlantic/Faeroe,Europe/Guernsey,Europe/Dublin,Europe/Isle_of_Man,"
      "Europe/Jersey,Europe/Lisbon,Atlantic/Madeira" },
    { "Greenwich Standard Time",
      "Atlantic/Reykjavik,Africa/Ouagadougou,Africa/Abidjan,Africa/Accra,Africa/Banjul,Africa/Conakry,"
      "Africa/Bissau,Africa/Monrovia,Africa/Bamako,Africa/Nouakchott,Atlantic/St_Helena,Africa/Freetown,"
      "Africa/Dakar,Africa/Sao_Tome,Africa/Lome" },
    { "W. Europe Standard Time",
      "Europe/Berlin,Europe/Andorra,Europe/Vienna,Europe/Zurich,Europe/Busingen,Europe/Gibraltar,"
      "Europe/Rome,Europe/Vaduz,Europe/Luxembourg,Europe/Monaco,Europe/Malta,Europe/Amsterdam,Europe/Oslo,"
      "Europe/Stockholm,Arctic/Longyearbyen,Europe/San_Marino,Europe/Vatican" },
    { "Central Europe Standard Time",
      "Europe/Budapest,Europe/Tirane,Europe/Prague,Europe/Podgorica,Europe/Belgrade,Europe/Ljubljana,"
      "Europe/Bratislava" },
    { "Romance Standard Time", "Europe/Paris,Europe/Brussels,Europe/Copenhagen,Europe/Madrid,Africa/Ceuta" },
    { "Central European Standard Time", "Europe/Warsaw,Europe/Sarajevo,Europe/Zagreb,Europe/Skopje" },
    { "W. Central Africa Standard Time",
      "Africa/Lagos,Africa/Luanda,Africa/Porto-Novo,Africa/Kinshasa,Africa/Bangui,Africa/Brazzaville,"
      "Africa/Douala,Africa/Algiers,Africa/Libreville,Africa/Malabo,Africa/Niamey,Africa/Ndjamena,"
      "Africa/Tunis,Etc/GMT-1" },
    { "Namibia Standard Time", "Africa/Windhoek" },
    { "Jordan Standard Time", "Asia/Amman" },
    { "GTB Standard Time", "Europe/Bucharest,Asia/Nicosia,Europe/Athens" },
    { "Middle East Standard Time", "Asia/Beirut" },
    { "Egypt Standard Time", "Africa/Cairo" },
    { "E. Europe Standard Time", "Europe/Chisinau" },
    { "Syria Standard Time", "Asia/Damascus" },
    { "West Bank Standard Time", "Asia/Hebron,Asia/Gaza" },
    { "South Africa Standard Time",
      "Africa/Johannesburg,Africa/Bujumbura,Africa/Gaborone,Africa/Lubumbashi,Africa/Maseru,"
      "Africa/Blantyre,Africa/Maputo,Africa/Kigali,Africa/Mbabane,Africa/Lusaka,Africa/Harare,Etc/GMT-2" },
    { "FLE Standard Time",
      "Europe/Kiev,Europe/Mariehamn,Europe/Sofia,Europe/Tallinn,Europe/Helsinki,Europe/Vilnius,Europe/Riga,"
      "Europe/Uzhgorod,Europe/Zaporozhye" },
    { "Israel Standard Time", "Asia/Jerusalem" },
    { "Kaliningrad Standard Time", "Europe/Kaliningrad" },
    { "Libya Standard Time", "Africa/Tripoli" },
    { "Arabic Standard Time", "Asia/Baghdad" },
    { "Turkey Standard Time", "Europe/Istanbul,Asia/Famagusta" },
    { "Arab Standard Time", "Asia/Riyadh,Asia/Bahrain,Asia/Kuwait,Asia/Qatar,Asia/Aden" },
    { "Belarus Standard Time", "Europe/Minsk" },
    { "Russian Standard Time", "Europe/Moscow,Europe/Kirov,Europe/Volgograd,Europe/Simferopol" },
    { "E. Africa Standard Time",
      "Africa/Nairobi,Antarctica/Syowa,Africa/Djibouti,Africa/Asmera,Africa/Addis_Ababa,Indian/Comoro,"
      "Indian/Antananarivo,Africa/Khartoum,Africa/Mogadishu,Africa/Juba,Africa/Dar_es_Salaam,"
      "Africa/Kampala,Indian/Mayotte,Etc/GMT-3" },
    { "Iran Standard Time", "Asia/Tehran" },
    { "Arabian Standard Time", "Asia/Dubai,Asia/Muscat,Etc/GMT-4" },
    { "Astrakhan Standard Time", "Europe/Astrakhan,Europe/Ulyanovsk" },
    { "Azerbaijan Standard Time", "Asia/Baku" },
    { "Russia Time Zone 3", "Europe/Samara" },
    { "Mauritius Standard Time", "Indian/Mauritius,Indian/Reunion,Indian/Mahe" },
    { "Saratov Standard Time", "Europe/Saratov" },
    { "Georgian Standard Time", "Asia/Tbilisi" },
    { "Caucasus Standard Time", "Asia/Yerevan" },
    { "Afghanistan Standard Time", "Asia/Kabul" },
    { "West Asia Standard Time",
      "Asia/Tashkent,Antarctica/Mawson,Asia/Oral,Asia/Aqtau,Asia/Aqtobe,Asia/Atyrau,Indian/Maldives,"
      "Indian/Kerguelen,Asia/Dushanbe,Asia/Ashgabat,Asia/Samarkand,Etc/GMT-5" },
    { "Ekaterinburg Standard Time", "Asia/Yekaterinburg" },
    { "Pakistan Standard Time", "Asia/Karachi" },
    { "India Standard Time", "Asia/Calcutta" },
    { "Sri Lanka Standard Time", "Asia/Colombo" },
    { "Nepal Standard Time", "Asia/Katmandu" },
    { "Central Asia Standard Time",
      "Asia/Almaty,Antarctica/Vostok,Asia/Urumqi,Indian/Chagos,Asia/Bishkek,Asia/Qyzylorda,Etc/GMT-6" },
    { "Bangladesh Standard Time", "Asia/Dhaka,Asia/Thimphu" },
    { "Omsk Standard Time", "Asia/Omsk" },
    { "Myanmar Standard Time", "Asia/Rangoon,Indian/Cocos" },
    { "SE Asia Standard Time",
      "Asia/Bangkok,Antarctica/Davis,Indian/Christmas,Asia/Jakarta,Asia/Pontianak,Asia/Phnom_Penh,"
      "Asia/Vientiane,Asia/Saigon,Etc/GMT-7" },
    { "Altai Standard Time", "Asia/Barnaul" },
    { "W. Mongolia Standard Time", "Asia/Hovd" },
    { "North Asia Standard Time", "Asia/Krasnoyarsk,Asia/Novokuznetsk" },
    { "N. Central Asia Standard Time", "Asia/Novosibirsk" },
    { "Tomsk Standard Time", "Asia/Tomsk" },
    { "China Standard Time", "Asia/Shanghai,Asia/Hong_Kong,Asia/Macau" },
    { "North Asia East Standard Time", "Asia/Irkutsk" },
    { "Singapore Standard Time",
      "Asia/Singapore,Asia/Brunei,Asia/Makassar,Asia/Kuala_Lumpur,Asia/Kuching,Asia/Manila,Etc/GMT-8" },
    { "W. Australia Standard Time", "Australia/Perth" },
    { "Taipei Standard Time", "Asia/Taipei" },
    { "Ulaanbaatar Standard Time", "Asia/Ulaanbaatar" },
    { "North Korea Standard Time", "Asia/Pyongyang" },
    { "Aus Central W. Standard Time", "Australia/Eucla" },
    { "Transbaikal Standard Time", "Asia/Chita" },
    { "Tokyo Standard Time", "Asia/Tokyo,Asia/Jayapura,Pacific/Palau,Asia/Dili,Etc/GMT-9" },
    { "Korea Standard Time", "Asia/Seoul" },
    { "Yakutsk Standard Time", "Asia/Yakutsk,Asia/Khandyga" },
    { "Cen. Australia Standard Time", "Australia/Adelaide,Australia/Broken_Hill" },
    { "AUS Central Standard Time", "Australia/Darwin" },
    { "E. Australia Standard Time", "Australia/Brisbane,Australia/Lindeman" },
    { "AUS Eastern Standard Time", "Australia/Sydney,Australia/Melbourne" },
    { "West Pacific Standard Time",
      "Pacific/Port_Moresby,Antarctica/DumontDUrville,Pacific/Truk,Pacific/Guam,Pacific/Saipan,Etc/GMT-10" },
    { "Tasmania Standard Time", "Australia/Hobart,Australia/Currie" },
    { "Vladivostok Standard Time", "Asia/Vladivostok,Asia/Ust-Nera" },
    { "Lord Howe Standard Time", "Australia/Lord_Howe" },
    { "Bougainville Standard Time", "Pacific/Bougainville" },
    { "Russia Time Zone 10", "Asia/Srednekolymsk" },
    { "Magadan Standard Time", "Asia/Magadan" },
    { "Norfolk Standard Time", "Pacific/Norfolk" },
    { "Sakhalin Standard Time", "Asia/Sakhalin" },
    { "Central Pacific Standard Time",
      "Pacific/Guadalcanal,Antarctica/Casey,Antarctica/Macquarie,Pacific/Ponape Pacific/Kosrae,"
      "Pacific/Noumea,Pacific/Efate,Etc/GMT-11" },
    { "Russia Time Zone 11", "Asia/Kamchatka,Asia/Anadyr" },
    { "New Zealand Standard Time", "Pacific/Auckland,Antarctica/McMurdo" },
    { "UTC+12",
      "Pacific/Tarawa,Pacific/Majuro,Pacific/Kwajalein,Pacific/Nauru,Pacific/Funafuti,Pacific/Wake,"
      "Pacific/Wallis,Etc/GMT-12" },
    { "Fiji Standard Time", "Pacific/Fiji" },
    { "Chatham Islands Standard Time", "Pacific/Chatham" },
    { "UTC+13", "Pacific/Enderbury,Pacific/Fakaofo,Etc/GMT-13" },
    { "Tonga Standard Time", "Pacific/Tongatapu" },
    { "Samoa Standard Time", "Pacific/Apia" },
    { "Line Islands Standard Time", "Pacific/Kiritimati,Etc/GMT-14" },
};
// clang-format on

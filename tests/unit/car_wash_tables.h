#pragma once

#include "server/text.h"

#include <string>

namespace vantrel::testing {

// The two price tables the console's PRICE SET sends in turn, and the block
// that carries one.
inline const Text kCarWashTable1 =
    u"ProgramCount=03\r\n"
    u"ProgramNumber=01\r\nFullPrice=00500\r\nDiscount1Price=00400\r\nDiscount2Price=00300\r\n"
    u"ProgramNumber=02\r\nFullPrice=00600\r\nDiscount1Price=00500\r\nDiscount2Price=00400\r\n"
    u"ProgramNumber=03\r\nFullPrice=00700\r\nDiscount1Price=00600\r\nDiscount2Price=00500\r\n"
    u"OptionCount=03\r\n"
    u"OptionNumber=01\r\nFullPrice=00025\r\nDiscount1Price=00020\r\nDiscount2Price=00015\r\n"
    u"OptionNumber=02\r\nFullPrice=00030\r\nDiscount1Price=00025\r\nDiscount2Price=00020\r\n"
    u"OptionNumber=03\r\nFullPrice=00035\r\nDiscount1Price=00030\r\nDiscount2Price=00025\r\n";
inline const Text kCarWashTable2 =
    u"ProgramCount=03\r\n"
    u"ProgramNumber=01\r\nFullPrice=00501\r\nDiscount1Price=00401\r\nDiscount2Price=00301\r\n"
    u"ProgramNumber=02\r\nFullPrice=00601\r\nDiscount1Price=00501\r\nDiscount2Price=00401\r\n"
    u"ProgramNumber=03\r\nFullPrice=00701\r\nDiscount1Price=00601\r\nDiscount2Price=00501\r\n"
    u"OptionCount=03\r\n"
    u"OptionNumber=01\r\nFullPrice=00026\r\nDiscount1Price=00021\r\nDiscount2Price=00016\r\n"
    u"OptionNumber=02\r\nFullPrice=00031\r\nDiscount1Price=00026\r\nDiscount2Price=00021\r\n"
    u"OptionNumber=03\r\nFullPrice=00036\r\nDiscount1Price=00031\r\nDiscount2Price=00026\r\n";

inline Text CarWashPriceBlock(const Text& table) {
    using namespace std::string_literals;
    return u"SetPriceData\r\n" + table + u"\r\n\r\n\0"s;
}

}  // namespace vantrel::testing

#include "text/sms_centres.h"

#include <array>
#include <cstddef>

namespace quillon {
namespace {

constexpr std::array<SmsCentre, 55> kCentres = {{
    {"Optus Aus, Australia", "+61412025989"},
    {"Vodafone, Australia", "+61415011501"},
    {"PTA Mobilkom, Austria", "+436640601"},
    {"A1, Austria", "+436640501"},
    {"Max.Mobil, Austria", "+43676021"},
    {"Belgacom Mobile, Belgium", "+3275161616"},
    {"Proximus, Belgium", "+3275161612"},
    {"Tele-Danmark, Danmark", "+4540390999"},
    {"Sonofon, Danmark", "+4540590000"},
    {"Comviq GSM, Sveden", "+46707990001"},
    {"Cellnet, GB    ", "+44802000332"},
    {"D1, Deutschland    ", "+491710760000"},
    {"D2, Deutschland    ", "+491722270000"},
    {"E-Plus (1)         ", "+491770610000"},
    {"E-Plus (2)         ", "+491770620000"},
    {"Radiolinja, Finnland", "+358508771010"},
    {"Telecom Finland, Finnland", "+358405202000"},
    {"France Telecom, France", "+33007001080"},
    {"STET Hellas, Hellas", "+3093599000"},
    {"cellnet, GB      ", "+44802000332"},
    {"Orange, GB      ", "+44973100973"},
    {"Vodafone, GB      ", "+44385016005"},
    {"Telecom CSL, Hongkong ", "+85290217572"},
    {"Satelinodo, Indonesia", "+62811615"},
    {"Eircell, Irland?  ", "+35387699989    "},
    {"Omnitel Pronto(1), Italia", "+393492000200"},
    {"Omnitel Pronto(1), Italia", "+393492000300"},
    {"P&T Luxembourg, Luxemburg", "+352021100003"},
    {"Bell South, Newsealand", "+6421600600"},
    {"Libertel, Holland", "+316540881000"},
    {"PTT Telecom, Holland", "+31653131313"},
    {"Telenor, Norwegen", "+4790002100"},
    {"Telenor, Norwegen", "+4790007777"},
    {"NetCom GSM, Norwegen", "+479208977"},
    {"Globe Telecom", "+6391702"},
    {"ERA GSM, Poland ", "+48602951111"},
    {"Polkomtel, Poland ", "+48601000310"},
    {"Polkomtel, Poland ", "+48601000311"},
    {"TMN, Portugal ", "+351936210000"},
    {"Telecel, Portugal ", "+351931770077"},
    {"Natel D, Schweiz", "+4179191"},
    {"Swiss PTT, Schweiz", "+4179191"},
    {"Swiss PTT, Schweiz", "+41791910000"},
    {"Swiss PTT, Schweiz", "+4189191"},
    {"Telefonica, Espana ", "+3409090909"},
    {"MTN, South Africa ", "+27829129"},
    {"Vodacom, South Africa ", "+27829129"},
    {"Comvig GSM, Sveden", "+46707990001"},
    {"Comvig GSM, Sveden", "+46707773078"},
    {"Europolitan, Sveden", "+46708000708"},
    {"Telia Mobiltel, Sveden  ", "+46705008999"},
    {"Turkcell, Turkey  ", "+90532901000"},
    {"Westel 900 GSM, Hungary  ", "+3630610000"},
    {"Pannon, Hungary  ", "+3630303100"},
    {"Washington PCS, USA     ", "001410258953"},
}};

}  // namespace

std::span<const SmsCentre> smsCentres() { return kCentres; }

SmsCentre smsCentreAt(int row) {
  if (row < 1 || row > static_cast<int>(kCentres.size())) return {};
  return kCentres[static_cast<std::size_t>(row - 1)];
}

std::string smsCentreClipboardText(int row) {
  SmsCentre centre = smsCentreAt(row);
  std::string text(centre.number);
  text += ';';
  text += centre.label;
  return text;
}

}  // namespace quillon

#include "Broadcast.h"
#include "Chain.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

constexpr sample::Ticks LENGTH = 8 * sample::SECOND; // four turns of the carousel

const Lines& withoutFault() {
    static const Lines told = chainOf(sample::broadcast(LENGTH));
    return told;
}

/// What is gone (-) and what has come (+).
Lines changes(const Lines& before, const Lines& after) {
    Lines all;
    for (const std::string& each : before) {
        if (!std::binary_search(after.begin(), after.end(), each)) {
            all.push_back("- " + each);
        }
    }
    for (const std::string& each : after) {
        if (!std::binary_search(before.begin(), before.end(), each)) {
            all.push_back("+ " + each);
        }
    }
    return all;
}

/// All files are gone, and what else has changed.
Lines noFiles(Lines others) {
    for (const char* const each :
         {"enquete", "enquete/eventos", "enquete/example", "enquete/example/mareacu", "enquete/example/mareacu/enquete",
          "enquete/example/mareacu/enquete/EnqueteXlet.class", "enquete/lib", "enquete/lib/grafico.jar", "guia",
          "guia/grade.lua", "guia/imagens", "guia/imagens/fundo.png", "guia/imagens/marca.png", "guia/principal.ncl",
          "icones", "icones/dvb.icon.0001", "icones/dvb.icon.0008", "icones/dvb.icon.0020"}) {
        others.push_back(std::string("- ") + each);
    }
    std::stable_sort(others.begin(), others.end(), [](const std::string& left, const std::string& right) {
        return left[0] == '-' && right[0] == '+';
    });
    std::sort(others.begin(),
              std::find_if(others.begin(), others.end(), [](const std::string& each) { return each[0] == '+'; }));
    return others;
}

struct Case {
    const char* fault;
    Lines changes;
};

void PrintTo(const Case& each, std::ostream* stream) {
    *stream << each.fault;
}

const std::vector<Case> CASES{
    {"app-no-pmt", {"- PMT"}},
    {"app-no-ait",
     {"- AIT 0001 00090500010100027F1401", "- AIT 0001 02050001017F40",
      "- AIT 0001 02280002027FFF22687474703A2F2F656E71756574652E6D6172656163752E6578616D706C652F617070",
      "- AIT 0001 version 0, control code 2", "- AIT 0009 000E0A00010100000002010200FF2801",
      "- AIT 0009 02050001017F40", "- AIT 0009 version 0, control code 1"}},
    {"app-ait-crc",
     {"- AIT 0001 00090500010100027F1401", "- AIT 0001 02050001017F40",
      "- AIT 0001 02280002027FFF22687474703A2F2F656E71756574652E6D6172656163752E6578616D706C652F617070",
      "- AIT 0001 version 0, control code 2", "- AIT 0009 000E0A00010100000002010200FF2801",
      "- AIT 0009 02050001017F40", "- AIT 0009 version 0, control code 1", "+ AIT, damaged"}},
    {"app-ait-flaps", {"+ AIT 0001 version 1, control code 2", "+ AIT 0009 version 1, control code 1"}},
    {"app-present",
     {"- AIT 0001 version 0, control code 2", "- AIT 0009 version 0, control code 1",
      "+ AIT 0001 version 1, control code 2", "+ AIT 0009 version 1, control code 2"}},
    {"app-kill",
     {"- AIT 0001 version 0, control code 2", "- AIT 0009 version 0, control code 1",
      "+ AIT 0001 version 1, control code 4", "+ AIT 0009 version 1, control code 4"}},
    {"app-profile",
     {"- AIT 0001 00090500010100027F1401", "- AIT 0001 version 0, control code 2",
      "- AIT 0009 000E0A00010100000002010200FF2801", "- AIT 0009 version 0, control code 1",
      "+ AIT 0001 00090500010900027F1401", "+ AIT 0001 version 1, control code 2",
      "+ AIT 0009 000E0A00010900000002090200FF2801", "+ AIT 0009 version 1, control code 1"}},
    {"app-no-label",
     {"- AIT 0001 00090500010100027F1401", "- AIT 0001 version 0, control code 2",
      "- AIT 0009 000E0A00010100000002010200FF2801", "- AIT 0009 version 0, control code 1",
      "+ AIT 0001 00090500010100027F1409", "+ AIT 0001 version 1, control code 2",
      "+ AIT 0009 000E0A00010100000002010200FF2809", "+ AIT 0009 version 1, control code 1"}},
    {"app-other-service",
     {"- AIT 0001 02050001017F40", "- AIT 0001 version 0, control code 2", "- AIT 0009 02050001017F40",
      "- AIT 0009 version 0, control code 1", "+ AIT 0001 020B000101FF07350735E6A140",
      "+ AIT 0001 version 1, control code 2", "+ AIT 0009 020B000101FF07350735E6A140",
      "+ AIT 0009 version 1, control code 1"}},
    {"app-no-tag",
     {"- AIT 0001 02050001017F40", "- AIT 0001 version 0, control code 2", "- AIT 0009 02050001017F40",
      "- AIT 0009 version 0, control code 1", "+ AIT 0001 02050001017F41", "+ AIT 0001 version 1, control code 2",
      "+ AIT 0009 02050001017F41", "+ AIT 0009 version 1, control code 1"}},
    {"app-no-packets", noFiles({"- DII 80000004 of carousel 1", "- DSI 80000000, gateway in carousel 1, 1/00000001",
                                "- module 1 version 0, complete", "- module 2 version 0, complete, imagens",
                                "- module 3 version 0, complete, principal", "- module 4 version 0, complete",
                                "- module 5 version 0, complete", "- packets"})},
    {"app-scrambled", {"- packets", "+ scrambled packets"}},
    {"app-crc", noFiles({"- DII 80000004 of carousel 1", "- DSI 80000000, gateway in carousel 1, 1/00000001",
                         "- module 1 version 0, complete", "- module 2 version 0, complete, imagens",
                         "- module 3 version 0, complete, principal", "- module 4 version 0, complete",
                         "- module 5 version 0, complete", "+ the CRC_32 is wrong"})},
    {"app-no-dsi", {"- DSI 80000000, gateway in carousel 1, 1/00000001"}},
    {"app-no-dii",
     noFiles({"- DII 80000004 of carousel 1", "- module 1 version 0, complete",
              "- module 2 version 0, complete, imagens", "- module 3 version 0, complete, principal",
              "- module 4 version 0, complete", "- module 5 version 0, complete", "+ module 1 version 0, unannounced",
              "+ module 2 version 0, unannounced", "+ module 3 version 0, unannounced",
              "+ module 4 version 0, unannounced", "+ module 5 version 0, unannounced"})},
    {"app-other-dii", {"- DII 80000004 of carousel 1", "+ DII 80010015 of carousel 1"}},
    {"app-other-id",
     {"- DII 80000004 of carousel 1", "- DSI 80000000, gateway in carousel 1, 1/00000001",
      "- module 1 version 0, complete", "+ DII 80010005 of carousel 99",
      "+ DSI 80010001, gateway in carousel 99, 1/00000001", "+ module 1 version 1, complete"}},
    {"app-other-carousel",
     {"- DSI 80000000, gateway in carousel 1, 1/00000001", "+ DSI 80010001, gateway in carousel 99, 1/00000001"}},
    {"app-slow", noFiles({"- module 1 version 0, complete", "- module 2 version 0, complete, imagens",
                          "- module 3 version 0, complete, principal", "- module 4 version 0, complete",
                          "- module 5 version 0, complete", "+ module 1 version 0, incomplete",
                          "+ module 2 version 0, incomplete, imagens", "+ module 3 version 0, incomplete, principal",
                          "+ module 4 version 0, incomplete", "+ module 5 version 0, incomplete"})},
    {"app-gateway-unannounced",
     noFiles({"- DII 80000004 of carousel 1", "- module 1 version 0, complete", "+ (no name)",
              "+ DII 80010005 of carousel 1", "+ module 1 version 0, unannounced"})},
    {"app-gateway-block",
     noFiles({"- module 1 version 0, complete", "+ (no name)", "+ module 1 version 0, incomplete"})},
    {"app-gateway-version", noFiles({"- DII 80000004 of carousel 1", "- module 1 version 0, complete", "+ (no name)",
                                     "+ DII 80010005 of carousel 1", "+ module 1 version 0, unannounced",
                                     "+ module 1 version 1, incomplete"})},
    {"app-gateway-inflate",
     noFiles({"- DII 80000004 of carousel 1", "- DSI 80000000, gateway in carousel 1, 1/00000001",
              "- module 1 version 0, complete", "+ (no name)", "+ DII 80010005 of carousel 1",
              "+ DSI 80010001, gateway in carousel 1, 1/00000001", "+ module 1 version 1, does not inflate"})},
    {"app-no-gateway",
     {"- DSI 80000000, gateway in carousel 1, 1/00000001", "+ DSI 80010001, gateway in carousel 1, 1/00000063"}},
    {"app-block",
     {"- guia/grade.lua", "- guia/principal.ncl", "- module 3 version 0, complete, principal",
      "+ guia/grade.lua, not there", "+ guia/principal.ncl, not there", "+ module 3 version 0, incomplete, principal"}},
    {"app-inflate",
     {"- guia/grade.lua", "- guia/principal.ncl", "- module 3 version 0, complete, principal",
      "+ guia/grade.lua, not there", "+ guia/principal.ncl, not there",
      "+ module 3 version 0, does not inflate, principal"}},
    {"app-no-base",
     {"- DII 80000004 of carousel 1", "- DSI 80000000, gateway in carousel 1, 1/00000001", "- guia", "- guia/grade.lua",
      "- guia/imagens", "- guia/imagens/fundo.png", "- guia/imagens/marca.png", "- guia/principal.ncl",
      "- module 1 version 0, complete", "+ DII 80010005 of carousel 1",
      "+ DSI 80010001, gateway in carousel 1, 1/00000001", "+ module 1 version 1, complete", "+ programas",
      "+ programas/grade.lua", "+ programas/imagens", "+ programas/imagens/fundo.png", "+ programas/imagens/marca.png",
      "+ programas/principal.ncl"}},
    {"app-no-document",
     {"- DII 80000004 of carousel 1", "- DSI 80000000, gateway in carousel 1, 1/00000001", "- guia/principal.ncl",
      "- module 1 version 0, complete", "- module 3 version 0, complete, principal", "+ DII 80010005 of carousel 1",
      "+ DSI 80010001, gateway in carousel 1, 1/00000001", "+ module 1 version 1, complete",
      "+ module 3 version 1, complete, principal"}},
    {"app-document-case",
     {"- DII 80000004 of carousel 1", "- DSI 80000000, gateway in carousel 1, 1/00000001", "- guia/principal.ncl",
      "- module 1 version 0, complete", "- module 3 version 0, complete, principal", "+ DII 80010005 of carousel 1",
      "+ DSI 80010001, gateway in carousel 1, 1/00000001", "+ guia/Principal.ncl", "+ module 1 version 1, complete",
      "+ module 3 version 1, complete, principal"}},
    {"app-no-class",
     {"- DII 80000004 of carousel 1", "- DSI 80000000, gateway in carousel 1, 1/00000001", "- enquete/example",
      "- enquete/example/mareacu", "- enquete/example/mareacu/enquete",
      "- enquete/example/mareacu/enquete/EnqueteXlet.class", "- module 1 version 0, complete",
      "- module 5 version 0, complete", "+ DII 80010005 of carousel 1",
      "+ DSI 80010001, gateway in carousel 1, 1/00000001", "+ module 1 version 1, complete",
      "+ module 5 version 1, complete"}},
    {"app-no-class-path",
     {"- DII 80000004 of carousel 1", "- DSI 80000000, gateway in carousel 1, 1/00000001", "- enquete/lib",
      "- enquete/lib/grafico.jar", "- module 1 version 0, complete", "- module 5 version 0, complete",
      "+ DII 80010005 of carousel 1", "+ DSI 80010001, gateway in carousel 1, 1/00000001",
      "+ module 1 version 1, complete", "+ module 5 version 1, complete"}},
    {"app-no-icon",
     {"- DII 80000004 of carousel 1", "- DSI 80000000, gateway in carousel 1, 1/00000001", "- icones",
      "- icones/dvb.icon.0001", "- icones/dvb.icon.0008", "- icones/dvb.icon.0020", "- module 1 version 0, complete",
      "- module 4 version 0, complete", "- module 5 version 0, complete", "+ DII 80010005 of carousel 1",
      "+ DSI 80010001, gateway in carousel 1, 1/00000001", "+ module 1 version 1, complete",
      "+ module 4 version 1, complete"}},
    {"app-no-prefetch",
     {"- DII 80000004 of carousel 1", "- DSI 80000000, gateway in carousel 1, 1/00000001",
      "- module 2 version 0, complete, imagens", "+ DII 80010005 of carousel 1",
      "+ DSI 80010001, gateway in carousel 1, 1/00000001", "+ module 2 version 1, complete"}},
    {"app-no-event", {"- event 7", "+ event 8"}},
    {"app-no-events", {"- event 7"}},
};

class ApplicationFaults : public testing::TestWithParam<Case> {};

} // namespace

TEST(ApplicationChain, HasAll) {
    EXPECT_THAT(withoutFault(),
                testing::ElementsAre(
                    "AIT 0001 00090500010100027F1401", "AIT 0001 02050001017F40",
                    "AIT 0001 02280002027FFF22"
                    "687474703A2F2F656E71756574652E6D6172656163752E6578616D706C652F617070",
                    "AIT 0001 version 0, control code 2", "AIT 0009 000E0A00010100000002010200FF2801",
                    "AIT 0009 02050001017F40", "AIT 0009 version 0, control code 1", "DII 80000004 of carousel 1",
                    "DSI 80000000, gateway in carousel 1, 1/00000001", "PMT", "enquete", "enquete/eventos",
                    "enquete/example", "enquete/example/mareacu", "enquete/example/mareacu/enquete",
                    "enquete/example/mareacu/enquete/EnqueteXlet.class", "enquete/lib", "enquete/lib/grafico.jar",
                    "event 7", "guia", "guia/grade.lua", "guia/imagens", "guia/imagens/fundo.png",
                    "guia/imagens/marca.png", "guia/principal.ncl", "icones", "icones/dvb.icon.0001",
                    "icones/dvb.icon.0008", "icones/dvb.icon.0020", "module 1 version 0, complete",
                    "module 2 version 0, complete, imagens", "module 3 version 0, complete, principal",
                    "module 4 version 0, complete", "module 5 version 0, complete", "packets"));
}

TEST_P(ApplicationFaults, ChangeTheChain) {
    const ByteVector stream = sample::broadcast(LENGTH, {sample::faultAt(GetParam().fault)});
    EXPECT_EQ(changes(withoutFault(), chainOf(stream)), GetParam().changes);
}

INSTANTIATE_TEST_SUITE_P(All, ApplicationFaults, testing::ValuesIn(CASES), [](const auto& each) {
    std::string name = each.param.fault;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

TEST(ApplicationFaultList, HasThoseOfTheTests) {
    std::vector<std::string> listed;
    for (const sample::Fault& each : sample::faults()) {
        if (each.name.find("app-") == 0) {
            listed.push_back(each.name);
        }
    }
    std::vector<std::string> tested;
    for (const Case& each : CASES) {
        tested.emplace_back(each.fault);
    }
    EXPECT_THAT(tested, testing::ElementsAreArray(listed));
}

/// What changes comes in new versions, and goes again.
TEST(ApplicationFaultTimes, BeginAndEnd) {
    const auto third = sample::faultAt("app-no-document", 4 * sample::SECOND, 8 * sample::SECOND);
    const Lines during = chainOf(sample::broadcast(8 * sample::SECOND, {third}));
    const Lines since = chainOf(sample::broadcast(LENGTH, {sample::faultAt("app-no-document")}));
    EXPECT_EQ(during, since);
    EXPECT_EQ(chainOf(sample::broadcast(12 * sample::SECOND, {third})), withoutFault());
}

// The time from an answer's text to the list of ads. One reference is the parse alone. The other shows that the time
// is linear in the number of ads.
#include <benchmark/benchmark.h>
#include <json/reader.h>
#include <json/value.h>
#include <json/writer.h>

#include <QCoreApplication>
#include <memory>

#include "Ad/Model/ZRAdModel.h"
#include "BenchTable.h"

namespace {

Json::Value Ad(int number) {
    Json::Value ad;
    ad["ad_id"] = std::to_string(18000 + number);
    ad["name"] = "Autumn offers for early risers";
    ad["start_time"] = 1'700'000'000 + number;
    ad["end_time"] = 1'701'000'000 + number;
    ad["expire_time"] = 1'702'000'000 + number;
    ad["push_id"] = "push-" + std::to_string(number);
    Json::Value& popup = ad["popup_ad"];
    popup["popup_type"] = 2;
    for (const int area : {500, 501, 502, 504, 507}) {
        popup["show_areas"].append(area);
    }
    popup["bottom_popup"]["img"] = "https://pictures.test/cards/" + std::to_string(number) + ".png";
    popup["bottom_popup"]["schema"] = "https://www.test/campaigns/autumn?ad=" + std::to_string(number);
    return ad;
}

/// Without blanks, as the server writes it.
std::string Answer(int ads) {
    Json::Value answer;
    answer["code"] = 0;
    answer["message"] = "ok";
    Json::Value& data = answer["data"];
    data["ad_type"] = 2;
    data["ad_position"] = 42;
    data["show_duration"] = 15;
    data["show_interval"] = 3600;
    data["show_interval_type"] = 1;
    data["enable_close"] = true;
    for (int number = 0; number < ads; ++number) {
        data["ad"].append(Ad(number));
    }
    Json::StreamWriterBuilder writer;
    writer["indentation"] = "";
    return Json::writeString(writer, answer);
}

void Parse(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        Json::Value value;
        benchmark::DoNotOptimize(Json::Reader().parse(text, value));
    }
}

void Decode(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        Json::Value value;
        Json::Reader().parse(text, value);
        CZRAdResponseModel response(nullptr);
        if (!response.Decode(value)) {
            state.SkipWithError("The answer was refused");
            return;
        }
        const std::unique_ptr<CZRAdModelList> list(response.GetData());
        benchmark::DoNotOptimize(list->GetAdList()->size());
    }
}

constexpr const char* kParse = "Parse of an answer with 10 ads";
constexpr const char* kTen = "Answer with 10 ads into a list";
constexpr const char* kHundred = "Answer with 100 ads into a list";

}  // namespace

int main(int argc, char** argv) {
    int applicationArgc = 1;
    const QCoreApplication application(applicationArgc, argv);

    const std::string ten = Answer(10);
    benchmark::RegisterBenchmark(kParse, Parse, ten);
    benchmark::RegisterBenchmark(kTen, Decode, ten);
    benchmark::RegisterBenchmark(kHundred, Decode, Answer(100));
    return bench::RunComparisons(argc, argv, {{kTen, kParse, 1.35}, {kHundred, kTen, 10.5}});
}

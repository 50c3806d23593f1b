#include <benchmark/benchmark.h>

#include <filesystem>
#include <vector>

#include <unistd.h>

#include "postal/address_list.h"
#include "postal/address_matching.h"
#include "postal/comma_table.h"
#include "postal/street_file.h"
#include "postal/street_file_verifier.h"
#include "server/setup/demo_streets.h"
#include "tests/postal/spoiled_addresses.h"

namespace {

constexpr std::size_t kAddresses = 2000;

std::filesystem::path Streets() {
  static const auto folder = [] {
    auto made = std::filesystem::temp_directory_path() / ("address_bench_" + std::to_string(getpid()));
    server::CreateDemoStreetFile(ZEMLO_SOURCE_DIR "/data", made);
    return made;
  }();
  return folder;
}

const postal::StreetFile& File() {
  static const auto file = postal::StreetFile::Read(Streets());
  return file;
}

enum class Sort { kRight, kSpoiled, kFarAway };

std::vector<platform::PostalAddress> Addresses(Sort sort) {
  postal::AddressSpoiler spoiler(Streets(), 7);
  std::vector<platform::PostalAddress> addresses;
  for (std::size_t place = 0; place < kAddresses; ++place) {
    const auto kind = static_cast<postal::Spoiling>(place % postal::kSpoilings.size());
    if (sort == Sort::kFarAway)
      addresses.push_back(spoiler.DrawFarAway());
    else if (const auto drawn = spoiler.Draw(kind); sort == Sort::kRight)
      addresses.push_back(drawn.right);
    else
      addresses.push_back(drawn.spoiled);
  }
  return addresses;
}

void VerifyOne(benchmark::State& state, Sort sort) {
  const auto addresses = Addresses(sort);
  const auto& file = File();
  std::size_t place = 0;
  for (auto _ : state) benchmark::DoNotOptimize(postal::Judge(file, addresses[place++ % kAddresses]));
}
BENCHMARK_CAPTURE(VerifyOne, right, Sort::kRight)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(VerifyOne, spoiled, Sort::kSpoiled)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(VerifyOne, far_away, Sort::kFarAway)->Unit(benchmark::kMicrosecond);

void ReadStreetFile(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(postal::StreetFile::Read(Streets()));
  state.counters["ranges"] = static_cast<double>(File().RangeCount());
  state.counters["zips"] = static_cast<double>(File().Zips().size());
  state.counters["KiB"] = static_cast<double>(File().MemoryUse()) / 1024;
}
BENCHMARK(ReadStreetFile)->Unit(benchmark::kMillisecond);

/// Nine right addresses and a spoiled one, as in a register that was never verified.
void VerifyList(benchmark::State& state) {
  const auto right = Addresses(Sort::kRight);
  const auto spoiled = Addresses(Sort::kSpoiled);
  constexpr std::size_t kLines = 100'000;
  std::string list = "line1,city,state,zip\r\n";
  for (std::size_t line = 0; line < kLines; ++line) {
    const auto& address = (line % 10 == 0 ? spoiled : right)[line % kAddresses];
    list += postal::CommaRecord({address.line1, address.city, address.state, address.zip});
  }
  postal::StreetFileVerifier verifier(Streets());
  for (auto _ : state) {
    std::size_t written = 0;
    postal::VerifyAddressList(list, verifier,
                              {.take = [&](const std::string& record) { written += record.size(); },
                               .tell = [](const std::string&) {}});
    benchmark::DoNotOptimize(written);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kLines));
}
BENCHMARK(VerifyList)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  std::filesystem::remove_all(Streets());
  return 0;
}

#include <benchmark/benchmark.h>

#include <unistd.h>
#include <zip.h>
#include <zlib.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "bench/merge_template.h"
#include "wordprocessor/document/template_cache.h"

/// One further letter of a template, beside what the same libraries need only to unpack, parse, write and
/// pack the parts that change. Read "Letter" against "Yardstick" of the same size.
namespace {

using wordprocessor::DataContext;
using wordprocessor::DocxDocument;
using wordprocessor::TemplateCache;

constexpr auto kChangedParts =
    std::to_array<const char*>({"word/document.xml", "word/header1.xml", "word/footer1.xml"});

/// Letters are written for real, but the moods of a disk stay out of the figures: after some thousand deleted
/// files, ext4 takes a millisecond to find room for the next one.
std::filesystem::path FolderInMemory() {
  const std::filesystem::path memory = "/dev/shm";
  return access(memory.c_str(), W_OK) == 0 ? memory : std::filesystem::temp_directory_path();
}

class Workplace {
 public:
  explicit Workplace(int bookmarks) : template_(MakeMergeTemplate(bookmarks)) {
    std::string name = (FolderInMemory() / "merge-bench-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
    folder_ = name;
    std::ofstream(Template()) << template_.docx;
  }
  Workplace(const Workplace&) = delete;
  Workplace& operator=(const Workplace&) = delete;
  ~Workplace() { std::filesystem::remove_all(folder_); }

  std::filesystem::path Template() const { return folder_ / "template.docx"; }
  std::filesystem::path Letter() const { return folder_ / "letter.docx"; }
  const std::string& docx() const { return template_.docx; }
  const std::string& context() const { return template_.context; }

 private:
  MergeTemplate template_;
  std::filesystem::path folder_;
};

void ReportPerBookmark(benchmark::State& state) {
  state.counters["per_bookmark"] =
      benchmark::Counter(static_cast<double>(state.range(0)),
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void Letter(benchmark::State& state) {
  const Workplace workplace(static_cast<int>(state.range(0)));
  TemplateCache cache;
  cache.Open(workplace.Template());
  for (auto _ : state) {
    auto letter = cache.Open(workplace.Template());
    if (!letter.MergeBookmarks(DataContext::Parse(workplace.context())).empty()) std::abort();
    letter.Save(workplace.Letter());
  }
  ReportPerBookmark(state);
}

void FirstLetter(benchmark::State& state) {
  const Workplace workplace(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    auto letter = DocxDocument::Open(workplace.Template());
    letter.MergeBookmarks(DataContext::Parse(workplace.context()));
    letter.Save(workplace.Letter());
  }
  ReportPerBookmark(state);
}

// The steps of a letter.

void ParseContext(benchmark::State& state) {
  const Workplace workplace(static_cast<int>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(DataContext::Parse(workplace.context()));
  ReportPerBookmark(state);
}

void MergeOnly(benchmark::State& state) {
  const Workplace workplace(static_cast<int>(state.range(0)));
  TemplateCache cache;
  const auto context = DataContext::Parse(workplace.context());
  for (auto _ : state) {
    auto letter = cache.Open(workplace.Template());
    benchmark::DoNotOptimize(letter.MergeBookmarks(context));
  }
  ReportPerBookmark(state);
}

void WriteOnly(benchmark::State& state) {
  const Workplace workplace(static_cast<int>(state.range(0)));
  auto letter = DocxDocument::Open(workplace.Template());
  letter.MergeBookmarks(DataContext::Parse(workplace.context()));
  for (auto _ : state) letter.Save(workplace.Letter());
  ReportPerBookmark(state);
}

// The yardstick.

std::vector<std::string> PackedParts(const std::string& docx, std::vector<std::size_t>& sizes) {
  zip_t* archive =
      zip_open_from_source(zip_source_buffer_create(docx.data(), docx.size(), 0, nullptr), 0, nullptr);
  std::vector<std::string> packed;
  for (const auto* name : kChangedParts) {
    zip_stat_t entry;
    zip_stat(archive, name, 0, &entry);
    zip_file_t* file = zip_fopen(archive, name, ZIP_FL_COMPRESSED);
    packed.emplace_back(entry.comp_size, '\0');
    zip_fread(file, packed.back().data(), entry.comp_size);
    zip_fclose(file);
    sizes.push_back(entry.size);
  }
  zip_discard(archive);
  return packed;
}

/// Runs `step` (inflate or deflate) over the whole input into `out`, which has room for all of it.
std::size_t RunZlib(z_stream& stream, int (*step)(z_stream*, int), std::string_view in, std::string& out) {
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(in.data()));
  stream.avail_in = static_cast<uInt>(in.size());
  stream.next_out = reinterpret_cast<Bytef*>(out.data());
  stream.avail_out = static_cast<uInt>(out.size());
  if (step(&stream, Z_FINISH) != Z_STREAM_END) throw std::runtime_error("zlib");
  return stream.total_out;
}

std::string Inflated(const std::string& packed, std::size_t size) {
  std::string out(size, '\0');
  z_stream stream{};
  inflateInit2(&stream, -MAX_WBITS);
  RunZlib(stream, inflate, packed, out);
  inflateEnd(&stream);
  return out;
}

std::string Deflated(const std::string& text) {
  z_stream stream{};
  deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
  std::string out(deflateBound(&stream, text.size()), '\0');
  out.resize(RunZlib(stream, deflate, text, out));
  deflateEnd(&stream);
  return out;
}

struct StringWriter : pugi::xml_writer {
  void write(const void* data, std::size_t size) override {
    text.append(static_cast<const char*>(data), size);
  }
  std::string text;
};

void Yardstick(benchmark::State& state) {
  const auto docx = MakeMergeTemplate(static_cast<int>(state.range(0))).docx;
  std::vector<std::size_t> sizes;
  const auto packed = PackedParts(docx, sizes);
  for (auto _ : state) {
    for (std::size_t i = 0; i < packed.size(); ++i) {
      auto text = Inflated(packed[i], sizes[i]);
      pugi::xml_document document;
      document.load_buffer_inplace(text.data(), text.size(), pugi::parse_default | pugi::parse_ws_pcdata);
      StringWriter writer;
      document.save(writer, "", pugi::format_raw);
      benchmark::DoNotOptimize(Deflated(writer.text));
    }
  }
  ReportPerBookmark(state);
}

}  // namespace

BENCHMARK(Yardstick)->Arg(40)->Arg(400)->Arg(4'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(Letter)->Arg(40)->Arg(400)->Arg(4'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(ParseContext)->Arg(40)->Arg(400)->Arg(4'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(MergeOnly)->Arg(40)->Arg(400)->Arg(4'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(WriteOnly)->Arg(40)->Arg(400)->Arg(4'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(FirstLetter)->Arg(40)->Arg(400)->Arg(4'000)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include "bench/program/proof/ProofExtras.h"
#include "bench/program/system/ChildProcess.h"
#include "bench/program/system/ExitStatus.h"
#include "bench/program/system/Failure.h"
#include "bench/program/system/System.h"

namespace kxbench {

namespace {

/// A folder for device descriptions that goes with the object.
class DescriptionFolder {
 public:
  DescriptionFolder()
      : path_(std::filesystem::temp_directory_path() /
              ("kxbench-proof-" + std::to_string(std::random_device()()))) {
    std::error_code error;
    if (!std::filesystem::create_directory(path_, error)) {
      throw Failure("cannot make a folder for device descriptions: " + error.message());
    }
  }
  ~DescriptionFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }
  DescriptionFolder(const DescriptionFolder&) = delete;
  DescriptionFolder& operator=(const DescriptionFolder&) = delete;

  std::string Write(const std::string& description) const {
    const std::filesystem::path file = path_ / "faulty.device";
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream << description;
    stream.close();
    if (!stream) throw Failure("cannot write the device description " + Utf8FromPath(file));
    return Utf8FromPath(file);
  }

 private:
  std::filesystem::path path_;
};

constexpr const char* NoRecords = "no records";

/// The records of a check by the whole program, joined as a worker's answer.
std::string RecordsThroughPlugin(const CommonOptions& common, const std::string& file,
                                 const std::string& device) {
  std::vector<std::string> arguments = {"--device", device, "--progress", "none"};
  if (common.plugin) arguments.insert(arguments.end(), {"--plugin", *common.plugin});
  arguments.insert(arguments.end(), {"check", file, "--format", "records"});
  ChildProcess check(arguments, ChildProcess::Errors::Dropped);
  check.CloseInput();
  std::string records = "records";
  while (const auto line = check.ReadLine()) records += "\t" + *line;
  return check.Wait() >= static_cast<int>(ExitStatus::Failed) ? NoRecords : records;
}

std::string Readable(std::string records) {
  if (records == NoRecords) return records;
  records.erase(0, records.find('\t') == std::string::npos ? records.size() : records.find('\t') + 1);
  for (std::size_t tab = 0; (tab = records.find('\t')) != std::string::npos;) records.replace(tab, 1, "; ");
  return records;
}

std::vector<proof::ProofFault> DrawnAtRandom(const proof::Proof& proof, std::size_t count) {
  std::vector<proof::ProofFault> faults;
  faults.reserve(proof.faults.size());
  for (const proof::ProvedFault& one : proof.faults) faults.push_back(one.fault);
  std::mt19937_64 random(proof.seed);
  for (std::size_t i = 0; i + 1 < faults.size() && i < count; ++i) {
    std::swap(faults[i], faults[i + random() % (faults.size() - i)]);
  }
  faults.resize(std::min(count, faults.size()));
  return faults;
}

}  // namespace

bool CompareWithPlugin(ProofWorkers& workers, const CommonOptions& common, std::size_t count,
                       proof::Proof& result, const std::function<bool()>& cancelled) {
  const std::vector<proof::ProofFault> faults = DrawnAtRandom(result, count);
  std::vector<std::string> simulated(faults.size());
  std::vector<ProofRequest> requests;
  for (std::size_t i = 0; i < faults.size(); ++i) {
    requests.push_back({"records " + proof::FaultWords(faults[i]),
                        [&simulated, i](const std::string& answer) { simulated[i] = answer; }});
  }
  if (!workers.Answer(requests, cancelled, [](std::size_t) {})) return false;

  const proof::DeviceModel good = GoodDevice({result.file, result.sha256, result.netOhm, result.device});
  const DescriptionFolder folder;
  for (std::size_t i = 0; i < faults.size(); ++i) {
    if (cancelled()) return false;
    std::string description;
    try {
      description = proof::DescriptionOf(proof::WithFault(good, faults[i]));
    } catch (const std::length_error& error) {
      throw Failure(std::string("--through-plugin: ") + error.what());
    }
    const std::string measured = RecordsThroughPlugin(common, result.file, folder.Write(description));
    ++result.throughPlugin;
    if (measured == simulated[i]) continue;
    result.pluginDifferences.push_back({faults[i], Readable(simulated[i]), Readable(measured)});
  }
  return true;
}

}  // namespace kxbench

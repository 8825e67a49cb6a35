#include "bench/program/Project.h"

#include <filesystem>
#include <system_error>

#include "bench/program/Failure.h"
#include "bench/program/System.h"

namespace kxbench {

void SetProjectVariables(const Options& options, kx::ScriptEnvironment& environment) {
  std::filesystem::path folder = ".";
  std::string name = Utf8FromPath(PathFromUtf8(options.file).stem());
  if (options.project) {
    const std::filesystem::path project = PathFromUtf8(*options.project);
    if (project.has_parent_path()) folder = project.parent_path();
    name = Utf8FromPath(project.filename());
    if (name.empty() || name == "." || name == "..") {
      throw Failure("--project " + *options.project + ": expected a folder and a name, DIR/NAME");
    }
  }
  std::error_code error;
  if (!std::filesystem::is_directory(folder, error)) {
    throw Failure("--project " + *options.project + ": there is no such folder");
  }
  // An empty last part gives the path its separator at the end, however it was written.
  const std::filesystem::path absolute =
      std::filesystem::absolute(folder).lexically_normal().make_preferred() / "";
  environment.SetVariable(kx::ProjectPathVariable, Utf8FromPath(absolute));
  environment.SetVariable(kx::ProjectNameVariable, name);
}

}  // namespace kxbench

#include "bench/program/host/Project.h"

#include <filesystem>
#include <system_error>

#include "bench/program/system/Failure.h"
#include "bench/program/system/System.h"

namespace kxbench {

Project ProjectOf(const std::optional<std::string>& option, const std::string& file) {
  std::filesystem::path folder = ".";
  std::string name = Utf8FromPath(PathFromUtf8(file).stem());
  if (option) {
    const std::filesystem::path project = PathFromUtf8(*option);
    if (project.has_parent_path()) folder = project.parent_path();
    name = Utf8FromPath(project.filename());
    if (name.empty() || name == "." || name == "..") {
      throw Failure("--project " + *option + ": expected a folder and a name, DIR/NAME");
    }
  }
  std::error_code error;
  if (!std::filesystem::is_directory(folder, error)) {
    throw Failure("--project " + *option + ": there is no such folder");
  }
  // An empty last part gives the path its separator at the end, however it was written.
  const std::filesystem::path absolute =
      std::filesystem::absolute(folder).lexically_normal().make_preferred() / "";
  return {Utf8FromPath(absolute), name};
}

void SetProjectVariables(const Project& project, kx::ScriptEnvironment& environment) {
  environment.SetVariable(kx::ProjectPathVariable, project.path);
  environment.SetVariable(kx::ProjectNameVariable, project.name);
}

}  // namespace kxbench

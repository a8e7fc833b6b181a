#!/usr/bin/env python3
"""Shows that the layers hold: with the flags of each layer's own sources, a header of a layer that it may use
compiles, and a header of one that it must not see is not found. layering.py SOURCE_DIR BUILD_DIR"""
import pathlib
import subprocess
import sys

import lint

# Folder of the layer: (includes that must work, includes that must not be found).
RULES = {
    "src/controls": (['"ports/Timers.h"'], ['"core/modINI.h"', "<QWidget>", '"bass.h"']),
    "src/forms": (['"controls/Form.h"'], ['"core/modINI.h"', "<QWidget>", '"qt/FormView.h"']),
    "src/skin": (['"controls/PictureRef.h"'], ['"core/modINI.h"', '"forms/wmain.h"', "<QImage>"]),
    "src/core": (['"ports/Files.h"'], ['"bass/modBass.h"', '"forms/wmain.h"', "<QString>"]),
    "src/bass": (['"bass.h"', '"core/RunError.h"'], ['"playlist/modTags.h"', '"channels/Channel.h"']),
    "src/playlist": (['"bass/modBass.h"'], ['"sound/Monitor.h"', '"windows/wmain.h"', "<QString>"]),
    "src/equalizer": (['"bass_fx.h"', '"forms/fX.h"'], ['"sound/TransportState.h"', '"windows/wmain.h"', "<QString>"]),
    "src/visualisation": (['"sound/TransportState.h"'], ['"windows/wmain.h"', '"qt/FormView.h"', "<QImage>"]),
    "src/listmanager": (['"playlist/Adding.h"'], ['"sound/Monitor.h"', '"windows/wmain.h"', "<QString>"]),
    "src/sound": (['"playlist/modTags.h"'], ['"windows/wmain.h"', '"lifecycle/mMain.h"', "<QWidget>"]),
    "src/windows": (['"sound/Monitor.h"'], ['"lifecycle/mMain.h"', '"qt/FormView.h"', "<QWidget>"]),
    "src/integration": (['"core/modINI.h"'], ['"bass/modBass.h"', '"controls/Form.h"', "<QString>"]),
    "src/lifecycle": (['"windows/wmain.h"'], ['"qt/FormView.h"', '"linux/LinuxFiles.h"', "<QWidget>"]),
    "src/platform/linux": (['"ports/Files.h"'], ['"sound/Monitor.h"', '"controls/Form.h"', "<QString>"]),
    "src/ui/qt": (['"controls/Form.h"', '"core/UnicodePath.h"', "<QWidget>"],
                  ['"sound/Monitor.h"', '"forms/wmain.h"', '"bass.h"']),
    "engine/plugins/flac": (['"bass_plugin.h"', '"decode/FileWindow.h"'], ['"core/modINI.h"', '"qt/FormView.h"', "<QString>"]),
    "engine/src/mixer": (['"bass.h"'], ['"core/modINI.h"', '"ports/Files.h"', "<QString>"]),
}


def compiles(include, compiler, flags, build):
    return subprocess.run([compiler, *flags, "-x", "c++", "-fsyntax-only", "-"], cwd=build,
                          input=f"#include {include}\n", capture_output=True, text=True)


def main():
    top, build = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
    commands = lint.compile_commands(build)
    wrong = []
    for folder, (allowed, forbidden) in RULES.items():
        compiler, flags = next(lint.arguments(entry) for path, entry in sorted(commands.items())
                               if path.parent == top / folder)
        for include in allowed:
            done = compiles(include, compiler, flags, build)
            if done.returncode != 0:
                wrong.append(f"{folder} should see {include}:\n{done.stderr}")
        for include in forbidden:
            done = compiles(include, compiler, flags, build)
            if "No such file" not in done.stderr:
                wrong.append(f"{folder} must not see {include}")
    print("\n".join(wrong))
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())

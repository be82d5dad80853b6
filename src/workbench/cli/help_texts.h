// What --help says besides the options.
#pragma once

namespace tiepoint::workbench::cli {

inline constexpr const char* programHelp =
    R"(Registers point clouds to one another by reference points.

Examples:
  tiepoint register --base S1 S1.txt S2.txt S3.txt
  tiepoint import --document hall.tiepoint S1.txt S2.txt
  tiepoint register --document hall.tiepoint --base S1 --apply --cloud S2=S2.xyz
  tiepoint register --help
)";

inline constexpr const char* registerHelp =
    R"(Registers groups of reference points and reports how well they fit.

Examples:
  tiepoint register --base reference reference.txt station2.txt
  tiepoint register --unit m --sigma 0.002 --base S1 S1.txt S2.txt --nxyzw S3.txt S4.txt
  tiepoint register --base S1 --exclude S4:T13 --weight S2:T07=0.5 S1.txt S2.txt S4.txt
  tiepoint register --document d.tiepoint --base S1 --cloud S2=S2.xyz --apply --moved out S1.txt S2.txt
  tiepoint register --base S1 --columns name,n,e,h,- --input-unit ft S1.csv S2.csv
  tiepoint register --match auto --base S1 --xyz S1.txt S2.txt S3.txt
  tiepoint register --base S1 --sigma 0.002 --control control.txt S1.txt S2.txt S3.txt
  tiepoint register --method iterative --max-iterations 5000 --convergence 1e-6 S1.txt S2.txt S3.txt
  tiepoint register --base S1 --matrices out --transforms out.json --report out.html S1.txt S2.txt
  tiepoint register --unit m --base S1 --picture hall.png --picture-view fit S1.txt S2.txt
  tiepoint register --json --quiet S1.txt S2.txt > result.json

Each file holds one station and becomes a group named after the file without its extension.
Without --document the drawing is kept in memory only; with it, files are imported into the drawing
first, and everything in the drawing takes part. A survey that can't be registered moves no cloud
and writes no file.
)";

inline constexpr const char* importHelp =
    R"(Imports files of reference points into a drawing, one group per file.

Examples:
  tiepoint import --document hall.tiepoint S1.txt S2.txt
  tiepoint import --document hall.tiepoint S1.txt --nxyzw S3.txt S4.txt
  tiepoint import --document hall.tiepoint --columns name=Ziel,x=Ost,y=Nord,z=Alt S1.csv

Separators, header, decimal mark and encoding are found out from each file; where two readings are
possible, the file is refused and the option that decides is named.
)";

inline constexpr const char* groupsHelp =
    R"(Lists the groups of reference points that a drawing holds.

Examples:
  tiepoint groups --document hall.tiepoint
  tiepoint groups --document hall.tiepoint --points --json
)";

inline constexpr const char* cloudsHelp =
    R"(Lists the point clouds of a drawing with their accumulated transformations.

Examples:
  tiepoint clouds --document hall.tiepoint
  tiepoint clouds --document hall.tiepoint --add S2=S2.xyz
  tiepoint clouds --document hall.tiepoint --moved out
)";

inline constexpr const char* renderHelp =
    R"(Draws the points of a drawing as they are stored, each group in its own system.

Examples:
  tiepoint render --document hall.tiepoint -o hall.png
  tiepoint render --document hall.tiepoint --view front --size 1920x1080 --unit m -o hall.svg

For a picture of registered points: tiepoint register --picture FILE
)";

inline constexpr const char* rpcHelp =
    R"(Answers JSON-RPC 2.0 requests from standard input, one per line.

Examples:
  tiepoint rpc --document hall.tiepoint
  echo '{"jsonrpc":"2.0","id":1,"method":"host.info"}' | tiepoint rpc
)";

inline constexpr const char* exitStatusHelp =
    R"(Exit status:
  0  done
  1  refused: the groups aren't connected, a motion stays open, points can't be named, or the drawing
     already has the group or cloud
  2  usage: unknown option, group or point, or an invalid weight
  3  file or drawing: missing, unreadable, empty, locked, of another kind, or not writable)";

}  // namespace tiepoint::workbench::cli

// Checks Python files, and prints what is found as FILE:LINE:COLUMN CODE MESSAGE:
//
//   node check.mjs FOLDER FILE...
//
// FOLDER is the one that the checker is installed in. The exit status is 1 when anything is found.

import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import { resolve } from "node:path";

const [folder, ...files] = process.argv.slice(2);
const require = createRequire(resolve(folder, "package.json"));
const { PositionEncoding, Workspace } = require("@astral-sh/ruff-wasm-nodejs");

const workspace = new Workspace(
    {
        "line-length": 100,
        "target-version": "py311",
        lint: {
            select: ["E", "F", "W", "B", "I", "SIM", "UP", "C4", "PIE", "RET"],
            // B023: the tests' conditions are called before the loop goes on.
            // B905: in them, the shorter of two sequences ends the comparison on purpose.
            // SIM905: command lines are easier to read as such.
            // RET503: a failure of a test ends the function. SIM102: two conditions may be two thoughts.
            ignore: ["B023", "B905", "SIM905", "RET503", "SIM102"],
            // Texts are not broken for a few columns.
            pycodestyle: { "max-line-length": 104 },
        },
    },
    PositionEncoding.Utf16,
);

let found = 0;
for (const file of files) {
    for (const { code, message, start_location: at } of workspace.check(readFileSync(file, "utf8"))) {
        console.log(`${file}:${at.row}:${at.column} ${code ?? "syntax"} ${message}`);
        found += 1;
    }
}
process.exit(found > 0 ? 1 : 0);

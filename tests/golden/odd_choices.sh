# What of a file is asked for.
try() { echo "loopwise survey $*"; loopwise survey --csv --threads 1 "$@" 2>&1 | grep -v ^file,; }
for file in text_three_columns.xyz text_packed.txt.gz pdb_plain.pdb pdb_packed.pdb.gz mmcif_whole.cif; do
    echo "standard input: $file"
    loopwise survey --csv --threads 1 - <odd/$file 2>&1 | grep -v ^file,
done
cd odd
try --chain B pdb_two_chains.pdb
try --chain A,B pdb_two_chains.pdb
try --chain A pdb_two_chains.pdb --chain B
try --chain C pdb_two_chains.pdb
try --chain A text_three_columns.xyz
try --chain A.2 pdb_chain_again.pdb
try --chain A pdb_chain_again.pdb
try --model 2 pdb_models.pdb
try --model all pdb_models.pdb
try --model 4 pdb_models.pdb
try --model 2 text_three_columns.xyz
try --atom P pdb_nucleic.pdb
try --atom "C4'" pdb_nucleic.pdb
try --atom "C4*" pdb_nucleic.pdb
try --atom CB pdb_plain.pdb
try --first 5B --last 9 pdb_insertions.pdb
try --first 5 --last 6 pdb_insertions.pdb
try --first 5D pdb_insertions.pdb
try --first 4 --last 50 pdb_gaps.pdb
try --last 99999999995 text_long_ids.txt
try --first 5 text_ring.txt
try --closed text_three_columns.xyz
try --closed --structure pdb_two_chains.pdb
try --structure --count 20 --seed 1 pdb_rings.pdb
try --structure --count 20 --seed 1 pdb_ring_and_chain.pdb
try --structure --count 20 --seed 1 --method two-points pdb_two_chains.pdb

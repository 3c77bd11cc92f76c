try() { loopwise "$@"; echo "-> $?" >&2; }
try close trefoil.txt | loopwise reduce -
try close --closure 7 -o loop.pdb trefoil.txt
tail -4 loop.pdb
try reduce -o core.pdb loop.pdb
cat core.pdb
ls
try close --method two-points --seed 3 --closure 2 core.pdb | wc -l
head -3 trefoil.txt | try reduce --open -
try check trefoil.txt core.pdb none.txt
try close --closure 400 trefoil.txt
try close --scale 2 trefoil.txt
try close --method outside --chain B core.pdb
sed 's/^5 /10000 /' trefoil.txt >high.txt
try close --pdb high.txt
try close -o no/such/folder.txt trefoil.txt
# What is left out, or already so, is said everywhere.
for command in close reduce check fingerprint; do
    loopwise $command odd/pdb_models.pdb 2>&1 | grep -c 'note:.*model'
done
loopwise close odd/text_ring.txt
loopwise close --chain A odd/pdb_insertions.pdb | tail -2
loopwise fingerprint --min-share nan trefoil.txt
loopwise knot - - <trefoil.txt
cp trefoil.txt mine.txt
loopwise close - -o mine.txt <mine.txt
cmp trefoil.txt mine.txt && sed '40,60d' trefoil.txt | loopwise knot --open 0 -
# What a new user gets wrong.
loopwise reduce trefoil.txt | wc -l
try close --seed 3 trefoil.txt
try close --method outside --closure 5 trefoil.txt
try close --method point --closure -1 trefoil.txt
try survey --method point --seed -1 trefoil.txt
try reduce -o core.CIF trefoil.txt
loopwise reduce -o core.ENT trefoil.txt 2>&1 && grep -c CONECT core.ENT
head -3 trefoil.txt >three.txt
try reduce three.txt
head -2 trefoil.txt | try reduce -
# Beads that share coordinates, and insertion codes: each bead that is left keeps its own residue.
awk '{ printf "ATOM  %5d  CA  GLY A%4d%s   %8.3f%8.3f%8.3f\n", NR, 1 + NR / 9, substr("ABCDEFGHI", 1 + NR % 9, 1), $2,
    4 * int($3 / 4), 4 * int($4 / 4) }' trefoil.txt >folded.pdb
echo END >>folded.pdb
loopwise reduce --open --pdb folded.pdb | grep -c ATOM
loopwise close --method outside --pdb folded.pdb | loopwise reduce --pdb - | grep ATOM | head -50 | tail -12
loopwise check "$(printf 'two\nlines.txt')" 2>&1
# The standard output by its name; a number with a leading zero is decimal.
loopwise close --closure 010 trefoil.txt | tail -1
loopwise close --closure 10 -o - trefoil.txt | tail -1
ls -- -

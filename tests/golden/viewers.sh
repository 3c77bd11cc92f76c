# Numbers below zero, out of order and with insertion codes, four of them at the end of the core.
awk '{ number = NR - 6; code = " " }
    NR > 22 && NR < 41 { number += 1000 }
    NR > 82 && NR < 87 { number = 76; code = substr("ABCD", NR - 82, 1) }
    { printf "ATOM  %5d  CA  GLY A%4d%s   %8.3f%8.3f%8.3f\n", NR, number, code, $2, $3, $4 }
    END { print "END" }' trefoil.txt >odd.pdb
loopwise fingerprint --closures 20 --pymol odd.pml --chimerax odd.cxc odd.pdb
grep resi odd.pml
grep '^name' odd.cxc

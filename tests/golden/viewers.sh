# Numbers below zero, out of order and with insertion codes, four of them at the end of the core.
awk '{ number = NR - 6; code = " " }
    NR > 22 && NR < 41 { number += 1000 }
    NR > 82 && NR < 87 { number = 76; code = substr("ABCD", NR - 82, 1) }
    { printf "ATOM  %5d  CA  GLY A%4d%s   %8.3f%8.3f%8.3f\n", NR, number, code, $2, $3, $4 }
    END { print "END" }' trefoil.txt >odd.pdb
loopwise fingerprint --closures 20 --pymol odd.pml --chimerax odd.cxc odd.pdb
grep resi odd.pml
grep '^name' odd.cxc
# Two chains of one name, of which only atoms' numbers tell one from the other; then a chain that only a segment names.
atoms() {
    awk '{ printf "ATOM  %5d  CA  GLY %s%4d    %8.3f%8.3f%8.3f%18s%-4s\n",
        NR + start, name, NR, $2 + start, $3, $4, "", segment }' start="$1" name="$2" segment="$3" trefoil.txt
}
write() { loopwise fingerprint --closures 10 --step 30 --pymol out.pml --chimerax out.cxc "$@" >log; echo "-> $?"; }
{ atoms 0 A ''; echo TER; atoms 200 A ''; printf 'TER\nEND\n'; } >two.pdb
atoms 0 ' ' PROA >segment.pdb
for arguments in '--chain A two.pdb' '--chain A.2 two.pdb' segment.pdb; do
    write $arguments && cat out.pml && grep '^name\|^color [^ct]' out.cxc
done
# A name over two lines, and one of a file, are no commands.
{
    printf 'data_m\nloop_\n'
    printf '_atom_site.%s\n' label_atom_id auth_asym_id label_seq_id Cartn_x Cartn_y Cartn_z
    awk '{ printf "CA\n;A\nquit\n;\n%d %s %s %s\n", NR, $2, $3, $4 }' trefoil.txt
    echo '#'
} >lines.cif
rm out.pml out.cxc
write lines.cif
ls out.*
cp odd.pdb 'a;quit\.pdb' && write 'a;quit\.pdb' && head -1 out.pml

"""The self-extractor: what it unpacks and starts, and what it refuses."""
import io
import re
import subprocess
import zipfile

import wine
from wine import WindowsTest, begin, damaged_at, end, packed, run, u32, windows

PAGE = b'<html>' + bytes(range(256)) * 2000
ENTRY, LOCAL = b'PK\x01\x02', b'PK\x03\x04'


def helper():
    return (wine.root / 'helper.exe').read_bytes()


def pages(*more):
    return [('calc.html', PAGE), ('setup.exe', helper()), *more]


class Unpacks(WindowsTest):
    def test_starts_setup_in_a_new_folder_and_removes_it_again(self):
        seen = []
        for arguments in (('/S',), ('/s',)):
            result = run(packed(self.folder, pages()), *arguments)
            self.assertEqual(result.returncode, 7, result.stderr)
            seen.append((wine.root / 'seen').read_text(encoding='utf-8').split('\n'))
        for path, words, *names in seen:
            self.assertRegex(path, r'(?i)^C:\\users\\.*\\Temp\\tarvolinex-[a-z]{16}\\setup\.exe$')
            self.assertEqual(words, '/S ')
            self.assertEqual(sorted(names), ['.', '..', 'calc.html', 'setup.exe'])
        self.assertNotEqual(seen[0][0], seen[1][0])

    def test_unpacks_into_a_given_folder_and_starts_nothing(self):
        target = self.folder / 'Für Müller & Söhne'
        files = pages(('GRÖSSE!0.HTML', b'umlauts'), ('empty.txt', b''))
        install = packed(self.folder, files)
        for argument in ([f'/D={windows(target)}'], f'/D={windows(target)}'.split(' ')):
            result = run(install, '/S', *argument)
            self.assertEqual((result.returncode, result.stderr), (0, ''))
            self.assertEqual({p.name: p.read_bytes() for p in target.iterdir()}, dict(files))
            (target / 'calc.html').write_bytes(b'old')  # the second time it is there already
        self.assertFalse((wine.root / 'seen').exists())

    def test_a_link_in_the_folder_is_replaced_and_not_followed(self):
        (self.folder / 'outside').write_bytes(b'safe')
        (self.folder / 'in').mkdir()
        (self.folder / 'in/calc.html').symlink_to(self.folder / 'outside')
        run(packed(self.folder, pages()), '/S', f'/D={windows(self.folder)}\\in')
        self.assertEqual((self.folder / 'outside').read_bytes(), b'safe')
        self.assertEqual((self.folder / 'in/calc.html').read_bytes(), PAGE)

    def test_what_a_signature_appends_does_no_harm(self):
        install = packed(self.folder, pages())
        with install.open('ab') as out:
            out.write(b'\0' * 4096 + b'PK\x05\x06' + b'\0' * 18)
        self.assertEqual(run(install, '/S').returncode, 7)

    def test_stored_entries_and_an_archive_of_many_pieces(self):
        stored = zipfile.ZipInfo('stored.bin')
        files = pages((stored, PAGE * 3), ('zeros.bin', bytes(30_000_000)))
        run(packed(self.folder, files), '/S', f'/D={windows(self.folder)}\\in')
        self.assertEqual((self.folder / 'in/stored.bin').read_bytes(), PAGE * 3)
        self.assertEqual((self.folder / 'in/zeros.bin').read_bytes(), bytes(30_000_000))

    def test_the_user_stops_it_and_nothing_is_unpacked(self):
        out = io.BytesIO()
        with zipfile.ZipFile(out, 'w', zipfile.ZIP_DEFLATED) as archive, archive.open('calc.html', 'w') as page:
            for _ in range(400):
                page.write(bytes(1_000_000))
        install = packed(self.folder, out.getvalue(), title='Müller   Self-Extractor')
        presses = begin(wine.root / 'helper.exe', 'press', '2', 'Müller Self-Extractor')
        self.assertEqual(run(install, f'/D={windows(self.folder)}\\in').returncode, 2)
        self.assertEqual(end(presses).returncode, 0)
        self.assertFalse((self.folder / 'in').exists())

    def test_arguments_that_mean_nothing_are_refused(self):
        self.assert_refused(run(packed(self.folder, pages()), '/S', '/Q'), '"/Q"')


class Refuses(WindowsTest):
    def assert_unpacks_nothing(self, install, *words):
        target = self.folder / 'target'
        self.assert_refused(run(install, '/S', f'/D={windows(target)}'), *words)
        self.assertFalse(target.exists(), words)
        self.assert_refused(run(install, '/S'), *words)
        self.assertFalse((wine.root / 'seen').exists(), words)

    def test_names_that_are_no_plain_file_names(self):
        names = ['..\\evil.txt', '../evil.txt', '..', '.', '/evil.txt', '\\evil.txt', 'C:\\evil.txt', 'C:evil.txt',
                 'sub/evil.txt', 'sub/', 'NUL', 'nul.txt', 'aux .txt', 'COM1', 'lpt9.html', 'com¹.txt', 'CONIN$',
                 'evil.txt.', 'evil.txt ', 'calc.html:evil', 'a?b', 'tab\t', '\\\\server\\share\\evil', 'x' * 300]
        for name in names:
            with self.subTest(name):
                self.assert_unpacks_nothing(packed(self.folder, pages((name, b'evil'))), 'not the plain name', 'CalcInst')
        for name in ('COM', 'COM10.txt', 'nullify.txt', '.hidden', 'a..b', 'Quote!0.html', "d'état.txt"):
            result = run(packed(self.folder, pages((name, b'good'))), '/S')
            self.assertEqual(result.returncode, 7, name + result.stderr)

    def test_links_folders_and_twins(self):
        link = zipfile.ZipInfo('link.html')
        link.create_system, link.external_attr = 3, 0o120777 << 16
        reparse = zipfile.ZipInfo('point.html')
        reparse.create_system, reparse.external_attr = 0, 0x400
        for entry in (link, reparse):
            self.assert_unpacks_nothing(packed(self.folder, pages((entry, b'/etc/passwd'))), entry.filename, 'link')
        self.assert_unpacks_nothing(packed(self.folder, pages(('CALC.HTML', b'2'))), '"CALC.HTML"', 'twice')

    def test_damaged_contents(self):
        install = packed(self.folder, [('setup.exe', helper()), ('calc.html', PAGE)])
        whole = install.read_bytes()
        cases = {  # what is written where behind the last entry's mark in the directory
            'another sum': (ENTRY, 16, b'\1\2\3\4'),
            'too long for the declared size': (ENTRY, 24, u32(100)),
            'too short for the declared size': (ENTRY, 24, u32(len(PAGE) + 1)),
            'cut': (ENTRY, 20, u32(50)),
            'no deflated data': (LOCAL, 40, b'\xff' * 40),
        }
        for title, case in cases.items():
            with self.subTest(title):
                install.write_bytes(whole)
                damaged_at(install, *case)
                self.assert_unpacks_nothing(install, '"calc.html"', 'check sum')

    def test_a_damaged_directory(self):
        install = packed(self.folder, pages(('last.txt', b'last')))
        whole = install.read_bytes()
        cases = {
            'encrypted': (ENTRY, 8, b'\1'), 'unknown way': (ENTRY, 10, b'\x0c'), '512 MB': (ENTRY, 24, u32(512 << 20)),
            'not where': (ENTRY, 20, u32(1 << 30)), 'directory': (ENTRY, 42, u32(64)), 'not the plain': (ENTRY, 46, b'*'),
            'is damaged': (b'PK\x05\x06', 16, u32(5)), 'fetch it again': (b'PK\x05\x06', 10, b'\x09'),
        }
        for words, case in cases.items():
            with self.subTest(words):
                install.write_bytes(whole)
                damaged_at(install, *case)
                self.assert_unpacks_nothing(install, words)
        install.write_bytes(whole)
        damaged_at(install, LOCAL, 30, b'L')  # the entry's own header bears another name
        self.assert_unpacks_nothing(install, '"last.txt"')

    def test_a_file_that_is_cut_short(self):
        install = packed(self.folder, pages())
        whole, module = install.read_bytes(), wine.MODULE.stat().st_size
        for size, words in ((len(whole) - 1, 'incomplete'), (module + 30, 'incomplete'), (module + 3, 'cut short'),
                            (module, 'holds no archive')):
            install.write_bytes(whole[:size])
            self.assert_unpacks_nothing(install, words, 'CalcInstall.exe')

    def test_commands_outside_the_folder_or_missing(self):
        for command in ('C:\\windows\\notepad.exe', 'setup.exe', '%t\\..\\setup.exe', '%t\\setup.exe /x', '%t\\', '%t\\NUL'):
            with self.subTest(command):
                install = packed(self.folder, pages(), command=command)
                self.assert_refused(run(install, '/S'), '%t' if command != '%t\\setup.exe /x' else '')
                self.assertFalse((wine.root / 'seen').exists())
        self.assert_refused(run(packed(self.folder, [('other.html', PAGE)]), '/S'), '"setup.exe" is missing')

    def test_a_calculator_without_its_installer_stays_where_it_can_be_opened(self):
        install = packed(self.folder, [('calc.html', PAGE)], title='Preis: Buch            Self-Extractor')
        self.assertEqual(run(install, '/S').returncode, 0)
        self.assertEqual((wine.user('AppData/Local', 'Preis_ Buch (download)') / 'calc.html').read_bytes(), PAGE)


class Programs(WindowsTest):
    def test_the_self_extractor_is_small(self):
        self.assertLessEqual(wine.MODULE.stat().st_size, 120 * 1024)

    def test_both_ask_for_no_administrator_and_know_large_screens_and_utf_8(self):
        for program in (wine.MODULE, wine.SETUP):
            text = subprocess.run(['wrestool', '-x', '--raw', '-t', '24', program], capture_output=True, text=True).stdout
            for words in ('level="asInvoker"', 'uiAccess="false"', '>true/pm</dpiAware>',
                          '>PerMonitorV2, PerMonitor</dpiAwareness>', '>UTF-8</activeCodePage>'):
                self.assertEqual(len(re.findall(re.escape(words), text)), 1, (program, words))

    def test_a_fault_of_its_own_is_told_on_the_error_handle(self):
        self.assert_refused(run(wine.root / 'helper.exe', 'fault'), 'A text is too long.')


class LoadsNothingPlanted(WindowsTest):
    def test_only_libraries_that_windows_never_searches_for_are_linked(self):
        for program in (wine.MODULE, wine.SETUP):
            text = subprocess.run(['x86_64-w64-mingw32-objdump', '-p', program], capture_output=True, text=True).stdout
            linked = {line.split()[-1].lower() for line in text.split('\n') if 'DLL Name:' in line}
            self.assertEqual(linked, {'kernel32.dll', 'msvcrt.dll'})

    def test_a_library_beside_the_program_is_never_loaded(self):
        names = ['comctl32.dll', 'cryptbase.dll', 'dwmapi.dll', 'profapi.dll', 'propsys.dll', 'riched20.dll',
                 'uxtheme.dll', 'version.dll', 'winmm.dll']
        # Wine prefers its own of some libraries wherever it meets them, unless it is told.
        overrides = wine.environment['WINEDLLOVERRIDES'] + ';' + ','.join(n[:-4] for n in names) + '=n,b'
        for name in names:
            (self.folder / name).write_bytes((wine.root / 'plant.dll').read_bytes())
        (self.folder / 'careless.exe').write_bytes(helper())
        run(self.folder / 'careless.exe', 'load', *names, WINEDLLOVERRIDES=overrides)
        marks = list(self.folder.glob('*.loaded'))
        self.assertEqual(len(marks), len(names), 'a planted library does not work')
        for mark in marks:
            mark.unlink()
        install = packed(self.folder, pages())
        run(install, f'/D={windows(self.folder)}\\in', WINEDLLOVERRIDES=overrides)
        self.assertTrue((self.folder / 'in/calc.html').exists())
        (self.folder / 'setup.exe').write_bytes(wine.SETUP.read_bytes())
        (self.folder / 'calc.html').touch()
        (self.folder / 'Setup.lst').write_text('[Setup]\nTitle=Planted\n[Files]\nFile1=calc.html\nFile2=setup.exe\n')
        for program, arguments, status in ((install, ['/S'], 7), (self.folder / 'setup.exe', ['/S'], 0)):
            self.assertEqual(run(program, *arguments, WINEDLLOVERRIDES=overrides).returncode, status)
        self.assertEqual(list(self.folder.glob('*.loaded')), [])

"""The self-extractor: what it unpacks and starts, and what it refuses."""
import re
import shutil
import subprocess
import zipfile

import wine
from wine import WindowsTest, begin, end, packed, run, windows

PAGE = b'<html>' + bytes(range(256)) * 2000
ENTRY, LOCAL, END = b'PK\x01\x02', b'PK\x03\x04', b'PK\x05\x06'


def u32(number):
    return number.to_bytes(4, 'little')


def pages(*more):
    return [('calc.html', PAGE), ('setup.exe', (wine.root / 'helper.exe').read_bytes()), *more]


class Unpacks(WindowsTest):
    def test_starts_setup_in_a_new_folder_and_removes_it_again(self):
        install, folders = packed(self.folder, pages()), set()
        for argument in ('/S', '/s'):
            result = run(install, argument)
            self.assertEqual(result.returncode, 7, result.stderr)
            path, words = (wine.root / 'seen').read_text(encoding='utf-8').split('\n')
            self.assertRegex(path, r'(?i)^C:\\users\\.*\\Temp\\tarvolinex-[a-z]{16}\\setup\.exe$')
            self.assertEqual(words, '/S ')
            folders.add(path)
            with install.open('ab') as out:  # what a signature appends does no harm
                out.write(b'\0' * 4096 + END + b'\0' * 18)
        self.assertEqual(len(folders), 2)
        self.assert_refused(run(install, '/S', '/Q'), '"/Q"')

    def test_unpacks_into_a_given_folder_follows_no_link_there_and_starts_nothing(self):
        target, outside = self.folder / 'Für Müller & Söhne', self.folder / 'outside'
        files = {'GRÖSSE!0.HTML': b'umlauts', 'empty.txt': b'', 'stored.bin': PAGE * 3, 'zeros.bin': bytes(30_000_000)}
        more = [(zipfile.ZipInfo(name) if name == 'stored.bin' else name, data) for name, data in files.items()]
        install = packed(self.folder, pages(*more))
        outside.write_bytes(b'safe')
        for argument in ([f'/D={windows(target)}'], f'/D={windows(target)}'.split(' ')):
            result = run(install, '/S', *argument)
            self.assertEqual((result.returncode, result.stderr), (0, ''))
            self.assertTrue({p.name: p.read_bytes() for p in target.iterdir()} == dict(pages(*files.items())))
            (target / 'empty.txt').write_bytes(b'old')  # the second time it is there already
            (target / 'calc.html').unlink()
            (target / 'calc.html').symlink_to(outside)
        self.assertEqual(outside.read_bytes(), b'safe')
        self.assertFalse((wine.root / 'seen').exists())

    def test_the_user_stops_it_and_nothing_is_unpacked(self):
        install = packed(self.folder, [('calc.html', bytes(400_000_000))], title='Müller   Self-Extractor')
        presses = begin(wine.root / 'helper.exe', 'press', '2', 'Müller Self-Extractor')
        self.assertEqual(run(install, f'/D={windows(self.folder)}\\in').returncode, 2)
        self.assertEqual(end(presses).returncode, 0)
        self.assertFalse((self.folder / 'in').exists())


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
                install = packed(self.folder, pages((name, b'evil')))
                self.assert_unpacks_nothing(install, 'not the plain name', 'CalcInst')
        good = ['COM', 'COM10.txt', 'nullify.txt', '.hidden', 'a..b', 'Quote!0.html', "d'état.txt"]
        result = run(packed(self.folder, pages(*((name, b'good') for name in good))), '/S')
        self.assertEqual(result.returncode, 7, result.stderr)

    def test_links_folders_and_twins(self):
        link, reparse = zipfile.ZipInfo('link.html'), zipfile.ZipInfo('point.html')
        link.create_system, link.external_attr = 3, 0o120777 << 16
        reparse.create_system, reparse.external_attr = 0, 0x400
        for entry, word in ((link, 'link'), (reparse, 'link'), (zipfile.ZipInfo('CALC.HTML'), 'twice')):
            install = packed(self.folder, pages((entry, b'/etc/passwd')))
            self.assert_unpacks_nothing(install, f'"{entry.filename}"', word)

    def test_damaged_contents_and_directories(self):
        install = packed(self.folder, pages()[::-1])
        whole = install.read_bytes()
        cases = (  # the words of the refusal, and what is written where behind the last such mark
            ('check sum', ENTRY, 16, b'\1\2\3\4'), ('check sum', ENTRY, 20, u32(50)), ('check sum', ENTRY, 24, u32(100)),
            ('check sum', ENTRY, 24, u32(len(PAGE) + 1)), ('check sum', LOCAL, 40, b'\xff' * 40),
            ('encrypted', ENTRY, 8, b'\1'), ('unknown way', ENTRY, 10, b'\x0c'), ('512 MB', ENTRY, 24, u32(512 << 20)),
            ('not where', ENTRY, 20, u32(1 << 30)), ('not where', LOCAL, 30, b'C'),  # the own header has another name
            ('directory', ENTRY, 42, u32(64)), ('not the plain', ENTRY, 46, b'*'), ('is damaged', END, 16, u32(5)),
            ('fetch it again', END, 10, b'\x09'))
        for words, mark, offset, data in cases:
            with self.subTest(words, mark=mark, offset=offset):
                at = whole.rindex(mark) + offset
                install.write_bytes(whole[:at] + data + whole[at + len(data):])
                self.assert_unpacks_nothing(install, words, '"calc.html"' if words == 'check sum' else '')

    def test_a_file_that_is_cut_short(self):
        install = packed(self.folder, pages())
        whole, module = install.read_bytes(), wine.MODULE.stat().st_size
        for size, words in ((len(whole) - 1, 'incomplete'), (module + 30, 'incomplete'), (module + 3, 'cut short'),
                            (module, 'holds no archive')):
            install.write_bytes(whole[:size])
            self.assert_unpacks_nothing(install, words, 'CalcInstall.exe')

    def test_commands_outside_the_folder_or_missing(self):
        commands = 'C:\\windows\\notepad.exe', 'setup.exe', '%t\\..\\setup.exe', '%t\\setup.exe /x', '%t\\', '%t\\NUL'
        for command in commands:
            with self.subTest(command):
                self.assert_refused(run(packed(self.folder, pages(), command=command), '/S'), '%t')
                self.assertFalse((wine.root / 'seen').exists())
        self.assert_refused(run(packed(self.folder, [('other.html', PAGE)]), '/S'), '"setup.exe" is missing')


class Programs(WindowsTest):
    def test_ask_for_no_administrator_link_only_what_windows_never_searches_for_and_know_screens_and_utf_8(self):
        self.assertLessEqual(wine.MODULE.stat().st_size, 120 * 1024)
        for program in (wine.MODULE, wine.SETUP):
            manifest = subprocess.check_output(['wrestool', '-x', '--raw', '-t', '24', program], text=True)
            for words in ('level="asInvoker"', 'uiAccess="false"', '>true/pm</dpiAware>',
                          '>PerMonitorV2, PerMonitor</dpiAwareness>', '>UTF-8</activeCodePage>'):
                self.assertEqual(manifest.count(words), 1, (program, words))
            headers = subprocess.check_output(['x86_64-w64-mingw32-objdump', '-p', program], text=True)
            linked = {name.lower() for name in re.findall(r'DLL Name: (\S+)', headers)}
            self.assertEqual(linked, {'kernel32.dll', 'msvcrt.dll'})

    def test_a_fault_of_its_own_is_told_on_the_error_handle(self):
        self.assert_refused(run(wine.root / 'helper.exe', 'fault'), 'A text is too long.')

    def test_a_library_beside_the_program_is_never_loaded(self):
        names = ['comctl32.dll', 'cryptbase.dll', 'dwmapi.dll', 'profapi.dll', 'propsys.dll', 'riched20.dll',
                 'uxtheme.dll', 'version.dll', 'winmm.dll']
        # Wine prefers its own of some libraries wherever it meets them, unless it is told.
        overrides = wine.environment['WINEDLLOVERRIDES'] + ';' + ','.join(n[:-4] for n in names) + '=n,b'
        copies = {name: 'plant.dll' for name in names} | {'careless.exe': 'helper.exe', 'setup.exe': wine.SETUP}
        for name, source in copies.items():
            shutil.copy(wine.root / source, self.folder / name)
        run(self.folder / 'careless.exe', 'load', *names, WINEDLLOVERRIDES=overrides)
        marks = list(self.folder.glob('*.loaded'))
        self.assertEqual(len(marks), len(names), 'a planted library does not work')
        for mark in marks:
            mark.unlink()
        install = packed(self.folder, pages())
        (self.folder / 'calc.html').touch()
        (self.folder / 'Setup.lst').write_text('[Setup]\nTitle=Planted\n[Files]\nFile1=calc.html\nFile2=setup.exe\n')
        shown, setup = f'/D={windows(self.folder)}\\in', self.folder / 'setup.exe'
        for program, argument, status in (install, shown, 0), (install, '/S', 7), (setup, '/S', 0):
            self.assertEqual(run(program, argument, WINEDLLOVERRIDES=overrides).returncode, status)
        self.assertEqual(list(self.folder.glob('*.loaded')), [])
